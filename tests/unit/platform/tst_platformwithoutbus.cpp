// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "notification.h"
#include "qmcedisplay.h"

#include "journal.h"
#include "testrunner.h"

#include <QDBusConnection>

#include <optional>

/** The classes that use a bus, on a device that has none. */
class PlatformWithoutBusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_log.emplace(&m_journal); }
    void cleanup() { m_log.reset(); }

    void losesANotificationInSilence()
    {
        Notification notification;
        notification.setBody("text"_s);
        notification.publish();
        QVERIFY(!QDBusConnection::sessionBus().isConnected());
        QCOMPARE(notification.body(), "text"_s);
        QCOMPARE(m_journal.entries(), QStringList());
    }

    void takesTheDisplayForOn()
    {
        const QMceDisplay display;
        connect(&display, &QMceDisplay::stateChanged, this, [this] { m_journal.add("changed"_s); });
        QVERIFY(!QDBusConnection::systemBus().isConnected());

        QCoreApplication::processEvents();
        QCOMPARE(display.state(), QMceDisplay::DisplayOn);
        QCOMPARE(m_journal.entries(), QStringList());
    }

private:
    Journal m_journal;
    std::optional<MessageLog> m_log;
};

VELMORA_TEST(PlatformWithoutBusTest, Anywhere, Core)

#include "tst_platformwithoutbus.moc"
