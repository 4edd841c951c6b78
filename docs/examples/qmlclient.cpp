// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "packages.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    qmlRegisterType<Packages>("Example", 1, 0, "Packages");
    const QQmlApplicationEngine engine(QUrl(QStringLiteral("qrc:/qmlclient.qml")));
    return QGuiApplication::exec();
}
