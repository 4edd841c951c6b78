// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// The floor of requests, PROGRAM PAGE: a service that is ready for all of them. PAGE is the QML file of its dialog.

#include "floornames.h"
#include "floorservice.h"

#include <QDBusConnection>
#include <QGuiApplication>
#include <QQuickView>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QQuickView view;
    FloorService service(QCoreApplication::arguments().at(1), view.engine());
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.registerObject(FloorNames::Path, &service, QDBusConnection::ExportAllContents);
    return bus.registerService(FloorNames::Service) ? QGuiApplication::exec() : 1;
}
