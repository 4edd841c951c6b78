// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "qmcedisplay.h"

#include "busmonitor.h"
#include "journal.h"
#include "recordingpeer.h"
#include "testrunner.h"

#include <QDBusConnectionInterface>

#include <memory>
#include <optional>

static_assert(QMceDisplay::DisplayOff == 0 && QMceDisplay::DisplayDim == 1 && QMceDisplay::DisplayOn == 2);

namespace {

const QString Bus = "org.freedesktop.DBus"_s;
const QString Mce = "com.nokia.mce"_s;
const QString Other = "com.nokia.other"_s;

const QString Question = "com.nokia.mce /com/nokia/mce/request com.nokia.mce.request.get_display_status()"_s;
const QString TurnsOff = "state 0"_s;
const QString Dims = "state 1"_s;
const QString TurnsOn = "state 2"_s;

}

/**
 * The state of the display: MCE's answers and signals, late, wrong or missing, and an MCE that comes late, vanishes or
 * returns.
 */
class QMceDisplayTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_journal.clear();
        m_log.emplace(&m_journal);
        m_announced = TurnsOn;
    }

    void cleanup()
    {
        m_display.reset();
        m_mce.reset();
        m_log.reset();
        // The next MCE cannot have the name before this one has lost it.
        QVERIFY(waitFor([this] { return !m_bus.interface()->isServiceRegistered(Mce); }, "MCE to lose its name"));
    }

    void listensAndAsksOnceWithoutMce()
    {
        BusMonitor monitor(m_bus, qgetenv("DBUS_SYSTEM_BUS_ADDRESS"));
        watch();
        QCOMPARE(m_display->state(), QMceDisplay::DisplayOn);
        QCOMPARE(happened(Bus), QStringList());

        // It listens before it asks.
        const QByteArray traffic = monitor.traffic();
        const int status = traffic.indexOf("member='display_status_ind'");
        const int owner = traffic.indexOf("member='NameOwnerChanged',arg0='com.nokia.mce'");
        const int question = traffic.indexOf("member=get_display_status");
        QVERIFY2(status > 0 && owner > 0, traffic.constData());
        QVERIFY2(question > status && question > owner, traffic.constData());
        QCOMPARE(traffic.count("member=get_display_status"), 1);

        // It starts and examines nobody: the bus answers so when it has searched in vain for a program that provides
        // MCE.
        QVERIFY2(!traffic.contains("ServiceUnknown"), traffic.constData());
        QVERIFY2(!traffic.contains("Introspect"), traffic.constData());
    }

    void takesTheAnswer_data() { addStates(); }
    void takesTheAnswer()
    {
        QFETCH(QByteArray, values);
        QFETCH(QString, state);
        startMce(values);
        watch();
        QCOMPARE(m_display->state(), QMceDisplay::DisplayOn);
        const QStringList changes = state.isEmpty() || state == TurnsOn ? QStringList() : QStringList(state);
        QCOMPARE(happened(), QStringList(Question) + changes);

        emitStatus("('off',)");
        QCOMPARE(happened(), state == TurnsOff ? QStringList() : QStringList(TurnsOff));
    }

    void takesALateAnswer_data()
    {
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<QStringList>("changesBySignal");
        QTest::addColumn<QStringList>("changesByAnswer");
        QTest::newRow("no signal before") << QByteArray() << QStringList() << QStringList(TurnsOff);
        QTest::newRow("nonsense before") << QByteArray("('undefined',)") << QStringList() << QStringList(TurnsOff);
        QTest::newRow("newer signal before") << QByteArray("('dimmed',)") << QStringList(Dims) << QStringList();
    }

    void takesALateAnswer()
    {
        QFETCH(QByteArray, signal);
        QFETCH(QStringList, changesBySignal);
        QFETCH(QStringList, changesByAnswer);
        startMce();
        watch();
        QCOMPARE(happened(), QStringList(Question));
        if (!signal.isEmpty()) {
            emitStatus(signal);
        }
        QCOMPARE(happened(), changesBySignal);
        QVERIFY(m_mce->answerHeld(PeerAnswer::values("('off',)")));
        QCOMPARE(happened(), changesByAnswer);
    }

    void ignoresARefusal()
    {
        // The text of an error is a string too.
        m_mce = makePeer({Mce}, PeerAnswer::error("com.nokia.mce.Error", "off"));
        watch();
        QCOMPARE(happened(), QStringList(Question));
    }

    void takesASignal_data() { addStates(); }
    void takesASignal()
    {
        QFETCH(QByteArray, values);
        QFETCH(QString, state);
        watchWith("('dimmed',)");
        emitStatus(values);
        QCOMPARE(happened(), state.isEmpty() || state == Dims ? QStringList() : QStringList(state));

        emitStatus("('off',)");
        QCOMPARE(happened(), state == TurnsOff ? QStringList() : QStringList(TurnsOff));
    }

    void takesEachSignalThatChangesSomething()
    {
        watchWith("('on',)");
        for (const char *status : {"on", "dimmed", "dimmed", "off", "off", "off", "on", "on", "off", "dimmed"}) {
            emitStatus(QByteArray("('") + status + "',)");
        }
        QCOMPARE(happened(), QStringList({Dims, TurnsOff, TurnsOn, TurnsOff, Dims}));
    }

    void ignoresSignalsOfOthers()
    {
        watchWith("('on',)");
        const auto peer = makePeer({Other});
        emitStatus(*peer, "('off',)");
        QCOMPARE(happened(Other), QStringList());
    }

    void ignoresOtherSignals()
    {
        watchWith("('on',)");
        m_mce->emitSignal("/com/nokia/mce/signal"_s, "com.nokia.mce.signal"_s, "tklock_mode_ind"_s, "('off',)");
        m_mce->emitSignal("/com/nokia/mce/signal"_s, "com.nokia.mce.request"_s, "display_status_ind"_s, "('off',)");
        m_mce->emitSignal("/com/nokia/mce/request"_s, "com.nokia.mce.signal"_s, "display_status_ind"_s, "('off',)");
        QCOMPARE(happened(), QStringList());
    }

    void survivesAnAnswerAfterItsEnd()
    {
        startMce();
        watch();
        QCOMPARE(happened(), QStringList(Question));
        m_display.reset();
        emitStatus("('off',)");
        QVERIFY(m_mce->answerHeld(PeerAnswer::values("('off',)")));
        QCOMPARE(happened(), QStringList());
    }

    void asksWhenMceAppears()
    {
        watch();
        happened(Bus);
        startMce("('off',)");
        QCOMPARE(happened(), QStringList({Question, TurnsOff}));
        emitStatus("('dimmed',)");
        QCOMPARE(happened(), QStringList(Dims));
    }

    void isOnWhenMceVanishes_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QStringList>("changes");
        QTest::newRow("off") << QByteArray("('off',)") << QStringList(TurnsOn);
        QTest::newRow("on") << QByteArray("('on',)") << QStringList();
    }

    void isOnWhenMceVanishes()
    {
        QFETCH(QByteArray, before);
        QFETCH(QStringList, changes);
        watchWith(before);
        m_mce->giveUp(Mce);
        QCOMPARE(happened(Bus), changes);

        // It stays on the bus, but it is MCE no more.
        emitStatus("('off',)");
        m_mce.reset();
        QCOMPARE(happened(Bus), QStringList());
    }

    void isOnWhenMceDies()
    {
        watchWith("('dimmed',)");
        m_mce.reset();
        QVERIFY(waitFor([this] { return m_display->state() == QMceDisplay::DisplayOn; }, "the display to be on"));
        QCOMPARE(happened(Bus), QStringList(TurnsOn));
    }

    void forgetsAQuestionToAVanishedMce()
    {
        m_mce = makePeer({Mce, Other});
        watch();
        QCOMPARE(happened(), QStringList(Question));
        m_mce->giveUp(Mce);
        QCOMPARE(happened(Bus), QStringList());
        QVERIFY(m_mce->answerHeld(PeerAnswer::values("('off',)")));
        QCOMPARE(happened(Other), QStringList());
    }

    void asksAgainWhenMceReturns()
    {
        watchWith("('off',)");
        m_mce->giveUp(Mce);
        QCOMPARE(happened(Bus), QStringList(TurnsOn));
        startMce("('dimmed',)");
        QCOMPARE(happened(), QStringList({Question, Dims}));
    }

    void prefersTheNewMceToTheEarlierOne()
    {
        const auto earlier = makePeer({Mce, Other});
        watch();
        QCOMPARE(happened(), QStringList(Question));
        earlier->giveUp(Mce);
        startMce("('dimmed',)");
        QCOMPARE(happened(), QStringList({Question, Dims}));

        QVERIFY(earlier->answerHeld(PeerAnswer::values("('off',)")));
        emitStatus(*earlier, "('off',)");
        QCOMPARE(happened(Other), QStringList());
    }

    void staysOnUntilASuccessorAnswers()
    {
        watchWith("('off',)");
        m_mce->giveUp(Mce);
        startMce();
        QCOMPARE(happened(), QStringList({TurnsOn, Question}));
        emitStatus("('off',)");
        QCOMPARE(happened(), QStringList(TurnsOff));
    }

    void belongsToItsParent()
    {
        QObject parent;
        QCOMPARE((new QMceDisplay(&parent))->parent(), &parent);
    }

private:
    static void addStates()
    {
        QTest::addColumn<QByteArray>("values");
        QTest::addColumn<QString>("state");
        QTest::newRow("off") << QByteArray("('off',)") << TurnsOff;
        QTest::newRow("dimmed") << QByteArray("('dimmed',)") << Dims;
        QTest::newRow("on") << QByteArray("('on',)") << TurnsOn;
        for (const char *nonsense : {"()",
                                     "('',)",
                                     "('OFF',)",
                                     "('Off',)",
                                     "(' off',)",
                                     "('offline',)",
                                     "('0',)",
                                     "('undefined',)",
                                     "('off', 'off')",
                                     "('off', int32 0)",
                                     "(int32 0,)",
                                     "(uint32 0,)",
                                     "(byte 0x00,)",
                                     "(true,)",
                                     "(false,)",
                                     "(0.0,)",
                                     "(<'off'>,)",
                                     "(['off'],)",
                                     "(@as [],)",
                                     "({'state': 'off'},)",
                                     "(('off',),)",
                                     "(objectpath '/off',)",
                                     "(signature 'o',)",
                                     "(b'off',)"}) {
            QTest::newRow(nonsense) << QByteArray(nonsense) << QString();
        }
    }

    /** Another participant of the bus, which has the names and answers like MCE. */
    std::unique_ptr<RecordingPeer> makePeer(const QStringList &names, const PeerAnswer &answer = PeerAnswer::held())
    {
        auto peer = std::make_unique<RecordingPeer>(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"), names, &m_journal);
        peer->answer("get_display_status"_s, answer);
        return peer;
    }

    /** Starts an MCE that answers with values, or doesn't answer. */
    void startMce(const QByteArray &values = {})
    {
        m_mce = makePeer({Mce}, values.isEmpty() ? PeerAnswer::held() : PeerAnswer::values(values));
    }

    /** Begins to watch the display. */
    void watch()
    {
        m_display = std::make_unique<QMceDisplay>();
        connect(m_display.get(), &QMceDisplay::stateChanged, this,
                [this] { m_journal.add("state %1"_s.arg(m_display->state())); });
    }

    /** Begins to watch the display with the values as MCE's answer. */
    void watchWith(const QByteArray &values)
    {
        startMce(values);
        watch();
        happened();
    }

    static void emitStatus(RecordingPeer &peer, const QByteArray &values)
    {
        peer.emitSignal("/com/nokia/mce/signal"_s, "com.nokia.mce.signal"_s, "display_status_ind"_s, values);
    }

    void emitStatus(const QByteArray &values) { emitStatus(*m_mce, values); }

    /**
     * All questions, announced states and log lines since the last call of this. A state that is not the announced one
     * makes an entry, too. Nothing is under way between the bus, the peer and the watcher then.
     */
    QStringList happened(const QString &peer = Mce)
    {
        if (!roundTrip(m_bus, Bus) || !roundTrip(m_bus, peer)) {
            m_journal.add("no answer from "_s + peer);
        }
        // An answer that came before anybody could wait for it goes through the event loop several times.
        QCoreApplication::processEvents(QEventLoop::AllEvents, WaitLimit);

        QStringList entries = m_journal.entries();
        m_journal.clear();
        for (const QString &entry : qAsConst(entries)) {
            m_announced = entry.startsWith("state "_s) ? entry : m_announced;
        }
        const QString state = m_display ? "state %1"_s.arg(m_display->state()) : m_announced;
        if (state != m_announced) {
            entries.append("not announced: "_s + state);
        }
        return entries;
    }

    QDBusConnection m_bus = QDBusConnection::systemBus();
    Journal m_journal;
    std::optional<MessageLog> m_log;
    std::unique_ptr<RecordingPeer> m_mce;
    std::unique_ptr<QMceDisplay> m_display;
    QString m_announced;
};

VELMORA_TEST(QMceDisplayTest, Anywhere, Gui)

#include "tst_qmcedisplay.moc"
