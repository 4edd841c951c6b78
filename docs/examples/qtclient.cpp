// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "packages.h"

#include <QCoreApplication>
#include <QtDebug>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QString command = application.arguments().value(1);
    const QStringList names = application.arguments().mid(2);

    Packages packages;
    QObject::connect(&packages, &Packages::finished, &application, [](bool success, const QString &errorString) {
        qInfo().noquote() << (success ? QStringLiteral("Done.") : errorString);
        QCoreApplication::exit(success ? 0 : 1);
    });
    if (command == QLatin1String("install") && !names.isEmpty()) {
        packages.install(names);
    } else if (command == QLatin1String("remove") && !names.isEmpty()) {
        packages.remove(names);
    } else {
        qCritical("usage: qtclient install FILE... | remove NAME...");
        return 2;
    }
    return QCoreApplication::exec();
}
