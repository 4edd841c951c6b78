// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "literals.h"

#include <QHash>
#include <QMetaMethod>
#include <QStringList>

/** The methods that a class declares, in their order, for example "private slot stop(int status)". */
inline QStringList methodsOf(const QMetaObject &type)
{
    const QHash<int, QString> kinds{{QMetaMethod::Signal, "signal"_s}, {QMetaMethod::Slot, "slot"_s}};
    QStringList methods;
    for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
        const QMetaMethod method = type.method(i);
        QStringList parameters;
        for (int p = 0; p < method.parameterCount(); ++p) {
            const QByteArray name = method.parameterNames().at(p);
            parameters.append(QString::fromLatin1(method.parameterTypes().at(p) + ' ' + name));
        }
        const QString access = method.access() == QMetaMethod::Private ? "private "_s : QString();
        methods.append("%1%2 %3(%4)"_s.arg(access, kinds.value(method.methodType()), QString::fromLatin1(method.name()),
                                           parameters.join(", "_s)));
    }
    return methods;
}
