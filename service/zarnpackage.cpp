// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "zarnpackage.h"

#include <QDBusMetaType>

QDBusArgument &operator<<(QDBusArgument &argument, const ZarnPackage &package)
{
    argument.beginMap(QMetaType::QString, QMetaType::QString);
    for (auto entry = package.constBegin(); entry != package.constEnd(); ++entry) {
        argument.beginMapEntry();
        argument << entry.key() << entry.value();
        argument.endMapEntry();
    }
    argument.endMap();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, ZarnPackage &package)
{
    package.clear();
    argument.beginMap();
    while (!argument.atEnd()) {
        QString key;
        QString value;
        argument.beginMapEntry();
        argument >> key >> value;
        argument.endMapEntry();
        package.insert(key, value);
    }
    argument.endMap();
    return argument;
}

void registerZarnPackage()
{
    qDBusRegisterMetaType<ZarnPackage>();
}
