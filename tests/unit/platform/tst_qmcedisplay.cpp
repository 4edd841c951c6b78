// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "qmcedisplayscene.h"

#include "busmonitor.h"
#include "devicetest.h"

/** What MCE answers and signals, late, never or in error, and what the state is then. */
class QMceDisplayTest : public QMceDisplayScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUpScene(); }
    void cleanup() { tearDownScene(); }

    void hasTheValuesOfTheDisplay();
    void isOnWithoutMce();
    void asksOnceAtFirst();
    void listensBeforeItAsks();
    void startsAndExaminesNobody();
    void takesTheAnswer_data() { addStates(); }
    void takesTheAnswer();
    void takesALateAnswer();
    void ignoresANonsensicalAnswer_data() { addNonsense(); }
    void ignoresANonsensicalAnswer();
    void ignoresARefusal();
    void takesASignal_data() { addStates(); }
    void takesASignal();
    void takesEachSignalThatChangesSomething();
    void ignoresANonsensicalSignal_data() { addNonsense(); }
    void ignoresANonsensicalSignal();
    void ignoresSignalsOfOthers();
    void ignoresOtherSignals();
    void prefersASignalToAnEarlierQuestion();
    void stillAwaitsTheAnswerAfterANonsensicalSignal();
    void survivesAnAnswerAfterItsEnd();
    void belongsToItsParent();

private:
    static void addNonsense();
    static void addStates();
};

void QMceDisplayTest::addNonsense()
{
    QTest::addColumn<QByteArray>("values");
    const QList<QByteArray> nonsense{"()",
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
                                     "(b'off',)"};
    for (const QByteArray &values : nonsense) {
        QTest::newRow(values.constData()) << values;
    }
}

void QMceDisplayTest::addStates()
{
    QTest::addColumn<QByteArray>("values");
    QTest::addColumn<QMceDisplay::State>("state");
    QTest::addColumn<QStringList>("changes");
    QTest::newRow("off") << QByteArray("('off',)") << QMceDisplay::DisplayOff << QStringList(TurnsOff);
    QTest::newRow("dimmed") << QByteArray("('dimmed',)") << QMceDisplay::DisplayDim << QStringList(Dims);
    QTest::newRow("on") << QByteArray("('on',)") << QMceDisplay::DisplayOn << QStringList();
}

void QMceDisplayTest::hasTheValuesOfTheDisplay()
{
    QCOMPARE(int(QMceDisplay::DisplayOff), 0);
    QCOMPARE(int(QMceDisplay::DisplayDim), 1);
    QCOMPARE(int(QMceDisplay::DisplayOn), 2);
}

void QMceDisplayTest::isOnWithoutMce()
{
    watch();
    QCOMPARE(m_display->state(), QMceDisplay::DisplayOn);
    QVERIFY(settle(Bus));
    QCOMPARE(m_display->state(), QMceDisplay::DisplayOn);
    QCOMPARE(takeEntries(), QStringList());
}

void QMceDisplayTest::asksOnceAtFirst()
{
    startMce();
    watch();
    QVERIFY(settle());
    QCOMPARE(m_display->state(), QMceDisplay::DisplayOn);
    QCOMPARE(takeEntries(), QStringList(Question));
}

void QMceDisplayTest::listensBeforeItAsks()
{
    BusMonitor monitor(m_bus, qgetenv("DBUS_SYSTEM_BUS_ADDRESS"));
    watch();
    QVERIFY(settle(Bus));

    const QByteArray traffic = monitor.traffic();
    const int status = traffic.indexOf("member='display_status_ind'");
    const int owner = traffic.indexOf("member='NameOwnerChanged',arg0='com.nokia.mce'");
    const int question = traffic.indexOf("member=get_display_status");
    QVERIFY2(status > 0, traffic.constData());
    QVERIFY2(owner > 0, traffic.constData());
    QVERIFY2(question > status && question > owner, traffic.constData());
}

void QMceDisplayTest::startsAndExaminesNobody()
{
    BusMonitor monitor(m_bus, qgetenv("DBUS_SYSTEM_BUS_ADDRESS"));
    watch();
    QVERIFY(settle(Bus));

    const QByteArray traffic = monitor.traffic();
    QVERIFY2(!traffic.contains("Introspect"), traffic.constData());
    // The bus would say so after a vain search for a program that provides MCE.
    QVERIFY2(!traffic.contains("ServiceUnknown"), traffic.constData());
    QCOMPARE(traffic.count("member=get_display_status"), 1);
}

void QMceDisplayTest::takesTheAnswer()
{
    QFETCH(QByteArray, values);
    QFETCH(QMceDisplay::State, state);
    QFETCH(QStringList, changes);
    startMce(PeerAnswer::values(values));
    watch();
    QCOMPARE(m_display->state(), QMceDisplay::DisplayOn);
    QVERIFY(settle());
    QCOMPARE(m_display->state(), state);
    QCOMPARE(takeEntries(), QStringList(Question) + changes);
}

void QMceDisplayTest::takesALateAnswer()
{
    startMce();
    watch();
    QVERIFY(settle());
    QCOMPARE(takeEntries(), QStringList(Question));
    QVERIFY(answerHeld("('off',)"));
    QCOMPARE(m_display->state(), QMceDisplay::DisplayOff);
    QCOMPARE(takeEntries(), QStringList(TurnsOff));
}

void QMceDisplayTest::ignoresANonsensicalAnswer()
{
    QFETCH(QByteArray, values);
    startMce(PeerAnswer::values(values));
    watch();
    QVERIFY(settle());
    QCOMPARE(m_display->state(), QMceDisplay::DisplayOn);
    QCOMPARE(takeEntries(), QStringList(Question));

    // Deaf it isn't.
    emitStatus("('off',)");
    QVERIFY(settle());
    QCOMPARE(takeEntries(), QStringList(TurnsOff));
}

void QMceDisplayTest::ignoresARefusal()
{
    // The text of an error is a string too.
    startMce(PeerAnswer::error("com.nokia.mce.Error", "off"));
    watch();
    QVERIFY(settle());
    QCOMPARE(m_display->state(), QMceDisplay::DisplayOn);
    QCOMPARE(takeEntries(), QStringList(Question));
}

void QMceDisplayTest::takesASignal()
{
    QFETCH(QByteArray, values);
    QFETCH(QMceDisplay::State, state);
    QFETCH(QStringList, changes);
    QVERIFY(watchWith("('on',)"));
    emitStatus(values);
    QVERIFY(settle());
    QCOMPARE(m_display->state(), state);
    QCOMPARE(takeEntries(), changes);
}

void QMceDisplayTest::takesEachSignalThatChangesSomething()
{
    QVERIFY(watchWith("('on',)"));
    for (const char *values : {"('on',)", "('dimmed',)", "('dimmed',)", "('off',)", "('off',)", "('off',)", "('on',)",
                               "('on',)", "('off',)", "('dimmed',)"}) {
        emitStatus(values);
    }
    QVERIFY(settle());
    QCOMPARE(takeEntries(), QStringList({Dims, TurnsOff, TurnsOn, TurnsOff, Dims}));
}

void QMceDisplayTest::ignoresANonsensicalSignal()
{
    QFETCH(QByteArray, values);
    QVERIFY(watchWith("('dimmed',)"));
    emitStatus(values);
    QVERIFY(settle());
    QCOMPARE(m_display->state(), QMceDisplay::DisplayDim);
    QCOMPARE(takeEntries(), QStringList());

    emitStatus("('off',)");
    QVERIFY(settle());
    QCOMPARE(takeEntries(), QStringList(TurnsOff));
}

void QMceDisplayTest::ignoresSignalsOfOthers()
{
    const QString stranger = QStringLiteral("com.nokia.stranger");
    QVERIFY(watchWith("('on',)"));
    const auto peer = makePeer({stranger});
    emitStatus(*peer, "('off',)");
    QVERIFY(settle(stranger));
    QCOMPARE(m_display->state(), QMceDisplay::DisplayOn);
    QCOMPARE(takeEntries(), QStringList());
}

void QMceDisplayTest::ignoresOtherSignals()
{
    const QString path = QStringLiteral("/com/nokia/mce/signal");
    const QString interface = QStringLiteral("com.nokia.mce.signal");
    const QString member = QStringLiteral("display_status_ind");
    QVERIFY(watchWith("('on',)"));
    m_mce->emitSignal(path, interface, QStringLiteral("tklock_mode_ind"), "('off',)");
    m_mce->emitSignal(path, QStringLiteral("com.nokia.mce.request"), member, "('off',)");
    m_mce->emitSignal(QStringLiteral("/com/nokia/mce/request"), interface, member, "('off',)");
    QVERIFY(settle());
    QCOMPARE(takeEntries(), QStringList());
}

void QMceDisplayTest::prefersASignalToAnEarlierQuestion()
{
    startMce();
    watch();
    QVERIFY(settle());
    emitStatus("('dimmed',)");
    QVERIFY(settle());
    QVERIFY(answerHeld("('off',)"));
    QCOMPARE(m_display->state(), QMceDisplay::DisplayDim);
    QCOMPARE(takeEntries(), QStringList({Question, Dims}));
}

void QMceDisplayTest::stillAwaitsTheAnswerAfterANonsensicalSignal()
{
    startMce();
    watch();
    QVERIFY(settle());
    emitStatus("('undefined',)");
    QVERIFY(settle());
    QVERIFY(answerHeld("('off',)"));
    QCOMPARE(takeEntries(), QStringList({Question, TurnsOff}));
}

void QMceDisplayTest::survivesAnAnswerAfterItsEnd()
{
    startMce();
    watch();
    QVERIFY(settle());
    m_display.reset();
    emitStatus("('off',)");
    QVERIFY(answerHeld("('off',)"));
    QCOMPARE(takeEntries(), QStringList(Question));
}

void QMceDisplayTest::belongsToItsParent()
{
    QObject parent;
    const auto *child = new QMceDisplay(&parent);
    QCOMPARE(child->parent(), &parent);
}

int main(int argc, char **argv)
{
    return runOnDevice<QMceDisplayTest>(argc, argv);
}

#include "tst_qmcedisplay.moc"
