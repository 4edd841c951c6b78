// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// The least program that asks the service to install a file, and waits for its answer: PROGRAM FILE

#include "busnames.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    using namespace BusNames::InstallationHandler;
    QDBusMessage message = QDBusMessage::createMethodCall(Service, Path, Interface, QStringLiteral("installFiles"));
    message << QStringList(QCoreApplication::arguments().value(1)) << false << false;
    return QDBusConnection::sessionBus().call(message).type() == QDBusMessage::ReplyMessage ? 0 : 1;
}
