// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "notification.h"

#include "busmonitor.h"
#include "devicetest.h"
#include "journal.h"
#include "messagelog.h"
#include "recordingpeer.h"
#include "roundtrip.h"

#include <QDBusConnectionInterface>
#include <QElapsedTimer>

#include <memory>
#include <optional>

namespace {

const QString Desktop = QStringLiteral("org.freedesktop.Notifications");

// Arguments as the desktop received them, each with its type.
QString notify(const QString &arguments)
{
    return QStringLiteral("org.freedesktop.Notifications /org/freedesktop/Notifications "
                          "org.freedesktop.Notifications.Notify")
            + arguments;
}

void publishRefusal()
{
    Notification notification;
    notification.setUrgency(Notification::Critical);
    notification.setIsTransient(true);
    notification.setAppIcon(QStringLiteral("icon-lock-warning"));
    notification.setBody(QStringLiteral("Ei sallittu: Velmora \"OS\" 5 €"));
    notification.publish();
}

const QString refusal =
        notify(QStringLiteral("('', uint32 0, 'icon-lock-warning', '', 'Ei sallittu: Velmora \"OS\" 5 €', @as [], "
                              "{'transient': <true>, 'urgency': <byte 0x02>}, -1)"));

}

/** What the desktop's notification service gets to see. */
class NotificationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void hasTheValuesOfTheDesktop();
    void tellsItsBody();
    void reachesTheDesktop();
    void isModestByDefault();
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
    m_desktop->answer(QStringLiteral("Notify"), PeerAnswer::values("(uint32 7,)"));
}

void NotificationTest::cleanup()
{
    m_log.reset();
    leave();
}

void NotificationTest::leave()
{
    m_desktop.reset();
    QTRY_VERIFY(!QDBusConnection::sessionBus().interface()->isServiceRegistered(Desktop));
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
    notification.setBody(QStringLiteral("text"));
    notification.publish();
    QCOMPARE(notification.body(), QStringLiteral("text"));
}

void NotificationTest::reachesTheDesktop()
{
    publishRefusal();
    QVERIFY(settle());
    QCOMPARE(m_journal.entries(), QStringList(refusal));
}

void NotificationTest::isModestByDefault()
{
    Notification().publish();
    QVERIFY(settle());
    QCOMPARE(m_journal.entries(),
             QStringList(notify(QStringLiteral("('', uint32 0, '', '', '', @as [], "
                                               "{'transient': <false>, 'urgency': <byte 0x01>}, -1)"))));
}

void NotificationTest::tellsEachUrgency_data()
{
    QTest::addColumn<int>("urgency");
    QTest::addColumn<QString>("wire");
    QTest::newRow("low") << 0 << QStringLiteral("<byte 0x00>");
    QTest::newRow("normal") << 1 << QStringLiteral("<byte 0x01>");
    QTest::newRow("critical") << 2 << QStringLiteral("<byte 0x02>");
}

void NotificationTest::tellsEachUrgency()
{
    QFETCH(int, urgency);
    QFETCH(QString, wire);
    Notification notification;
    notification.setUrgency(Notification::Urgency(urgency));
    notification.publish();
    QVERIFY(settle());
    QCOMPARE(m_journal.entries().size(), 1);
    QVERIFY2(m_journal.entries().constFirst().contains(QStringLiteral("'urgency': ") + wire),
             qPrintable(m_journal.entries().constFirst()));
}

void NotificationTest::isPublishedOnceForEachCall()
{
    publishRefusal();
    publishRefusal();
    QVERIFY(settle());
    QCOMPARE(m_journal.entries(), QStringList({refusal, refusal}));
}

void NotificationTest::doesNotWaitForTheDesktop()
{
    m_desktop->answer(QStringLiteral("Notify"), PeerAnswer::held());
    QElapsedTimer timer;
    timer.start();
    publishRefusal();
    QVERIFY2(timer.elapsed() < 5000, "The desktop never answers, and yet it was waited for");

    QVERIFY(settle());
    QCOMPARE(m_journal.entries(), QStringList(refusal));
    QVERIFY(m_desktop->answerHeld(PeerAnswer::values("(uint32 7,)")));
    QVERIFY(settle());
    QCOMPARE(m_journal.entries(), QStringList(refusal));
}

void NotificationTest::survivesARefusal()
{
    m_desktop->answer(QStringLiteral("Notify"), PeerAnswer::error("org.freedesktop.DBus.Error.LimitsExceeded"));
    publishRefusal();
    QVERIFY(settle());
    QCOMPARE(m_journal.entries(), QStringList(refusal));
}

void NotificationTest::survivesTheDesktopsDeath()
{
    m_desktop->answer(QStringLiteral("Notify"), PeerAnswer::death());
    publishRefusal();
    QTRY_VERIFY(!QDBusConnection::sessionBus().interface()->isServiceRegistered(Desktop));
    QCOMPARE(m_journal.entries(), QStringList(refusal));
}

void NotificationTest::isLostWithoutADesktop()
{
    leave();
    publishRefusal();
    QVERIFY(roundTrip(QDBusConnection::sessionBus(), QStringLiteral("org.freedesktop.DBus")));
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
    const auto *child = new Notification(&parent);
    QCOMPARE(child->parent(), &parent);
}

int main(int argc, char **argv)
{
    return runOnDevice<NotificationTest>(argc, argv);
}

#include "tst_notification.moc"
