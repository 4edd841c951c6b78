// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "notification.h"

#include "busmonitor.h"
#include "journal.h"
#include "literals.h"
#include "messagelog.h"
#include "recordingpeer.h"
#include "roundtrip.h"
#include "testrunner.h"

#include <QDBusConnectionInterface>
#include <QElapsedTimer>

#include <memory>
#include <optional>

namespace {

constexpr int Timeout = 20000; // milliseconds

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
    void init();
    void cleanup();

    void hasTheValuesOfTheDesktop();
    void tellsItsBody();
    void tellsEachUrgency_data();
    void tellsEachUrgency();
    void isPublishedOnceForEachCall();
    void doesNotWaitForTheDesktop();
    void survivesARefusal();
    void survivesTheDesktopsDeath();
    void isLostWithoutADesktop();
    void sendsOneMessageAndNoQuestion();
    void belongsToItsParent();

private:
    /** The desktop's notification service ends, and has ended afterwards. */
    void leave();
    bool settle() { return roundTrip(QDBusConnection::sessionBus(), Desktop); }

    Journal m_journal;
    std::optional<MessageLog> m_log;
    std::unique_ptr<RecordingPeer> m_desktop;
};

void NotificationTest::init()
{
    m_log.emplace(&m_journal);
    m_journal.clear();
    m_desktop = std::make_unique<RecordingPeer>(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), QStringList(Desktop),
                                                &m_journal);
    m_desktop->answer("Notify"_s, PeerAnswer::values("(uint32 7,)"));
}

void NotificationTest::cleanup()
{
    m_log.reset();
    leave();
}

void NotificationTest::leave()
{
    m_desktop.reset();
    QTRY_VERIFY_WITH_TIMEOUT(!QDBusConnection::sessionBus().interface()->isServiceRegistered(Desktop), Timeout);
}

void NotificationTest::hasTheValuesOfTheDesktop()
{
    QCOMPARE(int(Notification::Low), 0);
    QCOMPARE(int(Notification::Normal), 1);
    QCOMPARE(int(Notification::Critical), 2);
}

void NotificationTest::tellsItsBody()
{
    Notification notification;
    QCOMPARE(notification.body(), QString());
    notification.setBody("text"_s);
    notification.publish();
    QCOMPARE(notification.body(), "text"_s);
}

void NotificationTest::tellsEachUrgency_data()
{
    QTest::addColumn<int>("urgency");
    QTest::addColumn<QString>("wire");
    QTest::newRow("default") << -1 << "0x01";
    QTest::newRow("low") << 0 << "0x00";
    QTest::newRow("normal") << 1 << "0x01";
    QTest::newRow("critical") << 2 << "0x02";
}

void NotificationTest::tellsEachUrgency()
{
    QFETCH(int, urgency);
    QFETCH(QString, wire);
    Notification notification;
    if (urgency >= 0) {
        notification.setUrgency(Notification::Urgency(urgency));
    }
    notification.publish();
    QVERIFY(settle());
    const QString arguments = "('', uint32 0, '', '', '', @as [], {'transient': <false>, 'urgency': <byte %1>}, -1)"_s;
    QCOMPARE(m_journal.entries(), QStringList(notify(arguments.arg(wire))));
}

void NotificationTest::isPublishedOnceForEachCall()
{
    publishRefusal();
    publishRefusal();
    QVERIFY(settle());
    QCOMPARE(m_journal.entries(), QStringList({Refusal, Refusal}));
}

void NotificationTest::doesNotWaitForTheDesktop()
{
    m_desktop->answer("Notify"_s, PeerAnswer::held());
    QElapsedTimer timer;
    timer.start();
    publishRefusal();
    // A call that waits for an answer gives up after 25 seconds.
    QVERIFY2(timer.elapsed() < Timeout, "The desktop never answers, and yet it was waited for");

    QVERIFY(settle());
    QCOMPARE(m_journal.entries(), QStringList(Refusal));
    QVERIFY(m_desktop->answerHeld(PeerAnswer::values("(uint32 7,)")));
    QVERIFY(settle());
    QCOMPARE(m_journal.entries(), QStringList(Refusal));
}

void NotificationTest::survivesARefusal()
{
    m_desktop->answer("Notify"_s, PeerAnswer::error("org.freedesktop.DBus.Error.LimitsExceeded"));
    publishRefusal();
    QVERIFY(settle());
    QCOMPARE(m_journal.entries(), QStringList(Refusal));
}

void NotificationTest::survivesTheDesktopsDeath()
{
    m_desktop->answer("Notify"_s, PeerAnswer::death());
    publishRefusal();
    QTRY_VERIFY_WITH_TIMEOUT(!QDBusConnection::sessionBus().interface()->isServiceRegistered(Desktop), Timeout);
    QCOMPARE(m_journal.entries(), QStringList(Refusal));
}

void NotificationTest::isLostWithoutADesktop()
{
    leave();
    publishRefusal();
    QVERIFY(roundTrip(QDBusConnection::sessionBus(), "org.freedesktop.DBus"_s));
    QCOMPARE(m_journal.entries(), QStringList());
}

void NotificationTest::sendsOneMessageAndNoQuestion()
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    BusMonitor monitor(bus, qgetenv("DBUS_SESSION_BUS_ADDRESS"));
    const int before = monitor.traffic().size();
    publishRefusal();
    QVERIFY(settle());

    const QByteArray traffic = monitor.traffic().mid(before);
    const QByteArray sender = "sender=" + bus.baseService().toLatin1() + ' ';
    // The notification, the question that settled and the mark that ended the traffic.
    QCOMPARE(traffic.count("method call"), 3);
    QCOMPARE(traffic.count(sender), 3);
    QVERIFY(traffic.contains(
            "path=/org/freedesktop/Notifications; interface=org.freedesktop.Notifications; member=Notify"));
}

void NotificationTest::belongsToItsParent()
{
    QObject parent;
    QCOMPARE((new Notification(&parent))->parent(), &parent);
}

VELMORA_TEST(NotificationTest, Gui)

#include "tst_notification.moc"
