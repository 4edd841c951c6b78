// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "notification.h"

#include "journal.h"
#include "messagelog.h"

#include <QDBusConnection>
#include <QTest>

class NotificationWithoutBusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isLostInSilence();
};

void NotificationWithoutBusTest::isLostInSilence()
{
    Journal journal;
    const MessageLog log(&journal);
    Notification notification;
    notification.setBody(QStringLiteral("text"));
    notification.publish();
    QVERIFY(!QDBusConnection::sessionBus().isConnected());
    QCOMPARE(notification.body(), QStringLiteral("text"));
    QCOMPARE(journal.entries(), QStringList());
}

int main(int argc, char **argv)
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    const QCoreApplication application(argc, argv);
    NotificationWithoutBusTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_notificationwithoutbus.moc"
