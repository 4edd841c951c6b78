// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "qmcedisplay.h"

#include "journal.h"
#include "messagelog.h"

#include <QDBusConnection>
#include <QSignalSpy>
#include <QTest>

class QMceDisplayWithoutBusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesTheDisplayForOn();
};

void QMceDisplayWithoutBusTest::takesTheDisplayForOn()
{
    Journal journal;
    const MessageLog log(&journal);
    const QMceDisplay display;
    const QSignalSpy changes(&display, &QMceDisplay::stateChanged);
    QVERIFY(!QDBusConnection::systemBus().isConnected());

    QCoreApplication::processEvents();
    QCOMPARE(display.state(), QMceDisplay::DisplayOn);
    QCOMPARE(changes.size(), 0);
    QCOMPARE(journal.entries(), QStringList());
}

int main(int argc, char **argv)
{
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    const QCoreApplication application(argc, argv);
    QMceDisplayWithoutBusTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_qmcedisplaywithoutbus.moc"
