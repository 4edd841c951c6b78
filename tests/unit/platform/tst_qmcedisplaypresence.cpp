// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "qmcedisplayscene.h"

#include "devicetest.h"

/** MCE comes late, goes, and comes back; the display is on in the meantime. */
class QMceDisplayPresenceTest : public QMceDisplayScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUpScene(); }
    void cleanup() { tearDownScene(); }

    void asksWhenMceAppears();
    void isOnWhenMceVanishes();
    void isOnWhenMceDies();
    void changesNothingWhenMceVanishesWhileOn();
    void forgetsAQuestionToAVanishedMce();
    void asksAgainWhenMceReturns();
    void prefersTheNewMceToTheEarlierOne();
    void staysOnUntilASuccessorAnswers();
};

void QMceDisplayPresenceTest::asksWhenMceAppears()
{
    watch();
    QVERIFY(settle(Bus));
    startMce(PeerAnswer::values("('off',)"));
    QVERIFY(settle());
    QCOMPARE(m_display->state(), QMceDisplay::DisplayOff);
    QCOMPARE(takeEntries(), QStringList({Question, TurnsOff}));

    emitStatus("('dimmed',)");
    QVERIFY(settle());
    QCOMPARE(takeEntries(), QStringList(Dims));
}

void QMceDisplayPresenceTest::isOnWhenMceVanishes()
{
    QVERIFY(watchWith("('off',)"));
    m_mce->giveUp(Mce);
    QVERIFY(settle(Bus));
    QCOMPARE(m_display->state(), QMceDisplay::DisplayOn);
    QCOMPARE(takeEntries(), QStringList(TurnsOn));

    // It stays on the bus, but it is MCE no more.
    emitStatus("('off',)");
    m_mce.reset();
    QVERIFY(settle(Bus));
    QCOMPARE(takeEntries(), QStringList());
}

void QMceDisplayPresenceTest::isOnWhenMceDies()
{
    QVERIFY(watchWith("('dimmed',)"));
    m_mce.reset();
    QTRY_COMPARE(m_display->state(), QMceDisplay::DisplayOn);
    QVERIFY(settle(Bus));
    QCOMPARE(takeEntries(), QStringList(TurnsOn));
}

void QMceDisplayPresenceTest::changesNothingWhenMceVanishesWhileOn()
{
    QVERIFY(watchWith("('on',)"));
    m_mce->giveUp(Mce);
    QVERIFY(settle(Bus));
    QCOMPARE(m_display->state(), QMceDisplay::DisplayOn);
    QCOMPARE(takeEntries(), QStringList());
}

void QMceDisplayPresenceTest::forgetsAQuestionToAVanishedMce()
{
    const QString otherName = QStringLiteral("com.nokia.other");
    m_mce = makePeer({Mce, otherName});
    watch();
    QVERIFY(settle());
    m_mce->giveUp(Mce);
    QVERIFY(settle(Bus));
    QVERIFY(m_mce->answerHeld(PeerAnswer::values("('off',)")));
    QVERIFY(settle(otherName));
    QCOMPARE(m_display->state(), QMceDisplay::DisplayOn);
    QCOMPARE(takeEntries(), QStringList(Question));
}

void QMceDisplayPresenceTest::asksAgainWhenMceReturns()
{
    QVERIFY(watchWith("('off',)"));
    m_mce->giveUp(Mce);
    QVERIFY(settle(Bus));
    startMce(PeerAnswer::values("('dimmed',)"));
    QVERIFY(settle());
    QCOMPARE(m_display->state(), QMceDisplay::DisplayDim);
    QCOMPARE(takeEntries(), QStringList({TurnsOn, Question, Dims}));
}

void QMceDisplayPresenceTest::prefersTheNewMceToTheEarlierOne()
{
    const QString otherName = QStringLiteral("com.nokia.other");
    const auto earlier = makePeer({Mce, otherName});
    watch();
    QVERIFY(settle());
    earlier->giveUp(Mce);
    startMce(PeerAnswer::values("('dimmed',)"));
    QVERIFY(settle());
    QCOMPARE(takeEntries(), QStringList({Question, Question, Dims}));

    QVERIFY(earlier->answerHeld(PeerAnswer::values("('off',)")));
    emitStatus(*earlier, "('off',)");
    QVERIFY(settle(otherName));
    QCOMPARE(m_display->state(), QMceDisplay::DisplayDim);
    QCOMPARE(takeEntries(), QStringList());
}

void QMceDisplayPresenceTest::staysOnUntilASuccessorAnswers()
{
    QVERIFY(watchWith("('off',)"));
    m_mce->giveUp(Mce);
    startMce();
    QVERIFY(settle());
    QCOMPARE(takeEntries(), QStringList({TurnsOn, Question}));
    emitStatus("('off',)");
    QVERIFY(settle());
    QCOMPARE(takeEntries(), QStringList(TurnsOff));
}

int main(int argc, char **argv)
{
    return runOnDevice<QMceDisplayPresenceTest>(argc, argv);
}

#include "tst_qmcedisplaypresence.moc"
