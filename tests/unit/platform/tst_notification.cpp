// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "notification.h"

#include "busmonitor.h"
#include "journal.h"
#include "recordingpeer.h"
#include "testrunner.h"

#include <QDBusConnectionInterface>
#include <QElapsedTimer>

#include <memory>
#include <optional>

static_assert(Notification::Low == 0 && Notification::Normal == 1 && Notification::Critical == 2);

namespace {

const QString Desktop = "org.freedesktop.Notifications"_s;

// The journal's entry for a notification that has the arguments.
QString notify(const QString &arguments)
{
    return "org.freedesktop.Notifications /org/freedesktop/Notifications org.freedesktop.Notifications.Notify"_s
            + arguments;
}

void publishRefusal()
{
    Notification notification;
    notification.setUrgency(Notification::Critical);
    notification.setIsTransient(true);
    notification.setAppIcon("icon-lock-warning"_s);
    notification.setBody("Ei sallittu: Velmora \"OS\" 5 €"_s);
    notification.publish();
}

const QString Refusal = notify("('', uint32 0, 'icon-lock-warning', '', 'Ei sallittu: Velmora \"OS\" 5 €', @as [], "
                               "{'transient': <true>, 'urgency': <byte 0x02>}, -1)"_s);

}

/** Notifications as the desktop's notification service receives them. */
class NotificationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_log.emplace(&m_journal);
        m_journal.clear();
        m_desktop = std::make_unique<RecordingPeer>(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                                    QStringList(Desktop), &m_journal);
        m_desktop->answer("Notify"_s, PeerAnswer::values("(uint32 7,)"));
    }

    void cleanup()
    {
        m_log.reset();
        m_desktop.reset();
        QVERIFY(waitForLeave());
    }

    void tellsItsBody()
    {
        Notification notification;
        QCOMPARE(notification.body(), QString());
        notification.setBody("text"_s);
        notification.publish();
        QCOMPARE(notification.body(), "text"_s);
    }

    void tellsEachUrgency_data()
    {
        QTest::addColumn<int>("urgency");
        QTest::addColumn<QString>("wire");
        QTest::newRow("default") << -1 << "0x01";
        QTest::newRow("low") << int(Notification::Low) << "0x00";
        QTest::newRow("normal") << int(Notification::Normal) << "0x01";
        QTest::newRow("critical") << int(Notification::Critical) << "0x02";
    }

    void tellsEachUrgency()
    {
        QFETCH(int, urgency);
        QFETCH(QString, wire);
        Notification notification;
        if (urgency >= 0) {
            notification.setUrgency(Notification::Urgency(urgency));
        }
        notification.publish();
        QVERIFY(settle());
        const QString arguments =
                "('', uint32 0, '', '', '', @as [], {'transient': <false>, 'urgency': <byte %1>}, -1)"_s;
        QCOMPARE(m_journal.entries(), QStringList(notify(arguments.arg(wire))));
    }

    void isPublishedOnceForEachCall()
    {
        publishRefusal();
        publishRefusal();
        QVERIFY(settle());
        QCOMPARE(m_journal.entries(), QStringList({Refusal, Refusal}));
    }

    void doesNotWaitForTheDesktop()
    {
        m_desktop->answer("Notify"_s, PeerAnswer::held());
        QElapsedTimer timer;
        timer.start();
        publishRefusal();
        // A call that waits for an answer gives up after 25 seconds.
        QVERIFY2(timer.elapsed() < 20000, "The desktop never answers, and yet it was waited for");

        QVERIFY(settle());
        QCOMPARE(m_journal.entries(), QStringList(Refusal));
        QVERIFY(m_desktop->answerHeld(PeerAnswer::values("(uint32 7,)")));
        QVERIFY(settle());
        QCOMPARE(m_journal.entries(), QStringList(Refusal));
    }

    void survivesARefusal()
    {
        m_desktop->answer("Notify"_s, PeerAnswer::error("org.freedesktop.DBus.Error.LimitsExceeded"));
        publishRefusal();
        QVERIFY(settle());
        QCOMPARE(m_journal.entries(), QStringList(Refusal));
    }

    void survivesTheDesktopsDeath()
    {
        m_desktop->answer("Notify"_s, PeerAnswer::death());
        publishRefusal();
        QVERIFY(waitForLeave());
        QCOMPARE(m_journal.entries(), QStringList(Refusal));
    }

    void isLostWithoutADesktop()
    {
        m_desktop.reset();
        QVERIFY(waitForLeave());
        publishRefusal();
        QVERIFY(roundTrip(QDBusConnection::sessionBus(), "org.freedesktop.DBus"_s));
        QCOMPARE(m_journal.entries(), QStringList());
    }

    void sendsOneMessageAndNoQuestion()
    {
        const QDBusConnection bus = QDBusConnection::sessionBus();
        BusMonitor monitor(bus, qgetenv("DBUS_SESSION_BUS_ADDRESS"));
        const int before = monitor.traffic().size();
        publishRefusal();
        QVERIFY(settle());

        const QByteArray traffic = monitor.traffic().mid(before);
        const QByteArray sender = "sender=" + bus.baseService().toLatin1() + ' ';
        // These are the notification, the round trip and the mark that ends the traffic.
        QCOMPARE(traffic.count("method call"), 3);
        QCOMPARE(traffic.count(sender), 3);
        QVERIFY(traffic.contains(
                "path=/org/freedesktop/Notifications; interface=org.freedesktop.Notifications; member=Notify"));
    }

    void belongsToItsParent()
    {
        QObject parent;
        QCOMPARE((new Notification(&parent))->parent(), &parent);
    }

private:
    /** Waits until the desktop's notification service has left the bus. */
    static bool waitForLeave()
    {
        return waitFor([] { return !QDBusConnection::sessionBus().interface()->isServiceRegistered(Desktop); },
                       "the desktop to leave the bus");
    }

    static bool settle() { return roundTrip(QDBusConnection::sessionBus(), Desktop); }

    Journal m_journal;
    std::optional<MessageLog> m_log;
    std::unique_ptr<RecordingPeer> m_desktop;
};

VELMORA_TEST(NotificationTest, Anywhere, Gui)

#include "tst_notification.moc"
