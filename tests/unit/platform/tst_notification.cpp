// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "notification.h"

#include "busmonitor.h"
#include "journal.h"
#include "recordingpeer.h"
#include "testrunner.h"

#include <aboutsettings.h>

#include <QDBusConnectionInterface>
#include <QElapsedTimer>

#include <memory>
#include <optional>

static_assert(Notification::Low == 0 && Notification::Normal == 1 && Notification::Critical == 2);

namespace {

const QString Desktop = "org.freedesktop.Notifications"_s;

// The journal's entry for a notification with this title, body and so on, which takes the place of another one.
QString notify(uint replaced, const QString &icon, const QString &body, const QString &hints)
{
    return "org.freedesktop.Notifications /org/freedesktop/Notifications org.freedesktop.Notifications.Notify"
           "('', uint32 %1, '%2', '%3', '%4', @as [], {'image-path': <'dialog-warning'>, %5}, -1)"_s.arg(
                   QString::number(replaced), icon, AboutSettings().baseOperatingSystemName(), body, hints);
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

// The journal's entry for it.
QString refusal(uint replaced = 0)
{
    return notify(replaced, "icon-lock-warning"_s, "Ei sallittu: Velmora \"OS\" 5 €"_s,
                  "'transient': <true>, 'urgency': <byte 0x02>"_s);
}

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
        // The notification service's end is known when its signal has been handled.
        QCoreApplication::processEvents();
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
        QCOMPARE(m_journal.entries(),
                 QStringList(notify(0, {}, {}, "'transient': <false>, 'urgency': <byte %1>"_s.arg(wire))));
    }

    void isPublishedOnceForEachCall()
    {
        publishRefusal();
        publishRefusal();
        QVERIFY(settle());
        // The desktop had not numbered the first one yet.
        QCOMPARE(m_journal.entries(), QStringList({refusal(), refusal()}));
    }

    void takesThePlaceOfTheOneBefore()
    {
        m_desktop->answer("Notify"_s,
                          {PeerAnswer::values("(uint32 7,)"), PeerAnswer::values("(uint32 8,)"),
                           PeerAnswer::error("org.freedesktop.DBus.Error.LimitsExceeded"), PeerAnswer::values("('9',)"),
                           PeerAnswer::values("(uint32 10,)")});
        for (int i = 0; i < 5; ++i) {
            publishRefusal();
            QVERIFY(settle());
        }
        QCOMPARE(m_journal.entries(), QStringList({refusal(), refusal(7), refusal(8), refusal(), refusal()}));
    }

    void takesNoPlaceOfAClosedOne()
    {
        publishRefusal();
        QVERIFY(settle());
        closeNotification(8);
        publishRefusal();
        QVERIFY(settle());
        closeNotification(7);
        publishRefusal();
        QVERIFY(settle());
        QCOMPARE(m_journal.entries(), QStringList({refusal(), refusal(7), refusal()}));
    }

    void takesNoPlaceAtAnotherDesktop_data()
    {
        QTest::addColumn<bool>("isLate");
        QTest::newRow("answer before the change") << false;
        QTest::newRow("answer after the change") << true;
    }

    void takesNoPlaceAtAnotherDesktop()
    {
        QFETCH(bool, isLate);
        const PeerAnswer answer = PeerAnswer::values("(uint32 7,)");
        m_desktop->answer("Notify"_s, isLate ? PeerAnswer::held() : answer);
        publishRefusal();
        QVERIFY(settle());

        const QDBusConnection bus = QDBusConnection::sessionBus();
        const QString owner = bus.interface()->serviceOwner(Desktop);
        m_desktop->giveUp(Desktop);
        RecordingPeer another(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), QStringList(Desktop), &m_journal);
        another.answer("Notify"_s, answer);
        QCOMPARE(m_desktop->answerHeld(answer), isLate);
        QVERIFY(roundTrip(bus, owner));
        publishRefusal();
        QVERIFY(settle());
        QCOMPARE(m_journal.entries(), QStringList({refusal(), refusal()}));
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
        QCOMPARE(m_journal.entries(), QStringList(refusal()));
        QVERIFY(m_desktop->answerHeld(PeerAnswer::values("(uint32 7,)")));
        QVERIFY(settle());
        QCOMPARE(m_journal.entries(), QStringList(refusal()));
    }

    void survivesARefusal()
    {
        m_desktop->answer("Notify"_s, PeerAnswer::error("org.freedesktop.DBus.Error.LimitsExceeded"));
        publishRefusal();
        QVERIFY(settle());
        QCOMPARE(m_journal.entries(), QStringList(refusal()));
    }

    void survivesTheDesktopsDeath()
    {
        m_desktop->answer("Notify"_s, PeerAnswer::death());
        publishRefusal();
        QVERIFY(waitForLeave());
        QCOMPARE(m_journal.entries(), QStringList(refusal()));
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
        // The first notification of the process subscribes to the desktop's signals.
        publishRefusal();
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

    void closeNotification(uint id)
    {
        m_desktop->emitSignal("/org/freedesktop/Notifications"_s, Desktop, "NotificationClosed"_s,
                              "(uint32 " + QByteArray::number(id) + ", uint32 2)");
        QVERIFY(settle());
    }

    /** Waits until the desktop has received all notifications, and its answers and signals have been handled. */
    static bool settle() { return roundTrip(QDBusConnection::sessionBus(), Desktop); }

    Journal m_journal;
    std::optional<MessageLog> m_log;
    std::unique_ptr<RecordingPeer> m_desktop;
};

VELMORA_TEST(NotificationTest, Anywhere, Gui)

#include "tst_notification.moc"
