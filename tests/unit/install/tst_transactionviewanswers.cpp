// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "transactionviewscene.h"

#include "devicetest.h"

namespace {

const QString Plain = QStringLiteral("plain");
const QString ConfirmedSignal = QStringLiteral("installationConfirmed, window there");
const QString CancelledSignal = QStringLiteral("installationCancelled, window gone");
const QString Destroyed = QStringLiteral("dialog destroyed");

}

/** The dialog is answered: by the user, by the display going off, once and again. */
class TransactionViewAnswersTest : public TransactionViewScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUpView(); }
    void cleanup() { tearDownView(); }

    void endsWithConfirmation();
    void endsWithRefusal();
    void endsWhenTheDisplayGoesOff();
    void staysWhenTheDisplayIsOtherwise_data();
    void staysWhenTheDisplayIsOtherwise();
    void ignoresTheDisplayWithoutDialog();
    void staysWhenTheDisplayWasOffBefore();
    void ignoresTheDisplayAfterTheAnswer();
    void remembersTheNameOfTheShowing();
    void canBeAskedAgain();
    void handlesASecondAnswer_data();
    void handlesASecondAnswer();
    void leavesTheFirstOfTwoDialogsAlive();
    void answersOfTheFirstDialogEndTheSecond();

private:
    QStringList withoutDeletion() const;
};

// The dialog is deleted some time after the answer.
QStringList TransactionViewAnswersTest::withoutDeletion() const
{
    QStringList happened = entries();
    happened.removeAll(Destroyed);
    return happened;
}

void TransactionViewAnswersTest::endsWithConfirmation()
{
    QVERIFY(show());
    m_peer->answer(QStringLiteral("notification_end_req"),
                   PeerAnswer::values().after([this] { note(QStringLiteral("answer") + presence()); }));
    TestDialog::confirm(TestDialog::window());

    QVERIFY(!m_view->hasWindow());
    QVERIFY(!m_view->isVisible());
    TestDialog::deleteScheduled();
    QCOMPARE(entries(),
             QStringList(
                     {ConfirmedSignal, endRequest(Plain, 3000000), QStringLiteral("answer, window there"), Destroyed}));
}

void TransactionViewAnswersTest::endsWithRefusal()
{
    QVERIFY(show());
    TestDialog::dismiss(TestDialog::window());

    QVERIFY(!m_view->hasWindow());
    QVERIFY(!m_view->isVisible());
    TestDialog::deleteScheduled();
    QCOMPARE(entries(), QStringList({endRequest(Plain, 1000000), CancelledSignal, Destroyed}));
}

void TransactionViewAnswersTest::endsWhenTheDisplayGoesOff()
{
    QVERIFY(show());
    QVERIFY(setDisplay("dimmed"));
    QVERIFY(setDisplay("off"));

    QVERIFY(!m_view->hasWindow());
    QVERIFY(!m_view->isVisible());
    TestDialog::deleteScheduled();
    QCOMPARE(entries(), QStringList({endRequest(Plain, 0), CancelledSignal, Destroyed}));
}

void TransactionViewAnswersTest::staysWhenTheDisplayIsOtherwise_data()
{
    QTest::addColumn<QList<QByteArray>>("states");
    QTest::newRow("dimmed") << QList<QByteArray>{"dimmed"};
    QTest::newRow("on again") << QList<QByteArray>{"dimmed", "on"};
    QTest::newRow("to and fro") << QList<QByteArray>{"dimmed", "on", "dimmed", "on"};
}

void TransactionViewAnswersTest::staysWhenTheDisplayIsOtherwise()
{
    QFETCH(QList<QByteArray>, states);
    QVERIFY(show());
    for (const QByteArray &state : qAsConst(states)) {
        QVERIFY(setDisplay(state));
    }
    QVERIFY(m_view->isVisible());
    QCOMPARE(entries(), QStringList());

    // It was listening all the time.
    QVERIFY(setDisplay("off"));
    QCOMPARE(withoutDeletion(), QStringList({endRequest(Plain, 0), CancelledSignal}));
}

void TransactionViewAnswersTest::ignoresTheDisplayWithoutDialog()
{
    for (const char *state : {"off", "on", "off"}) {
        QVERIFY(setDisplay(state));
    }
    QCOMPARE(entries(), QStringList());
}

void TransactionViewAnswersTest::staysWhenTheDisplayWasOffBefore()
{
    QVERIFY(setDisplay("off"));
    QVERIFY(show());
    QVERIFY(settle());
    QVERIFY(setDisplay("on"));
    QVERIFY(m_view->isVisible());
    QCOMPARE(entries(), QStringList());

    QVERIFY(setDisplay("off"));
    QCOMPARE(withoutDeletion(), QStringList({endRequest(Plain, 0), CancelledSignal}));
}

void TransactionViewAnswersTest::ignoresTheDisplayAfterTheAnswer()
{
    QVERIFY(show());
    TestDialog::confirm(TestDialog::window());
    m_journal.clear();
    QVERIFY(setDisplay("off"));
    QCOMPARE(withoutDeletion(), QStringList());
}

void TransactionViewAnswersTest::remembersTheNameOfTheShowing()
{
    QVERIFY(show());
    m_package.readPackage(packageFile(QStringLiteral("translated")));
    TestDialog::confirm(TestDialog::window());

    QCOMPARE(entries(),
             QStringList({readLine(QStringLiteral("translated")), ConfirmedSignal, endRequest(Plain, 3000000)}));
}

void TransactionViewAnswersTest::canBeAskedAgain()
{
    QVERIFY(show());
    TestDialog::dismiss(TestDialog::window());
    TestDialog::deleteScheduled();
    QVERIFY(show());
    TestDialog::confirm(TestDialog::window());
    QCOMPARE(entries(), QStringList({ConfirmedSignal, endRequest(Plain, 3000000)}));
}

void TransactionViewAnswersTest::handlesASecondAnswer_data()
{
    const QStringList confirmed{ConfirmedSignal, endRequest(Plain, 3000000)};
    const QStringList confirmedLate{QStringLiteral("installationConfirmed, window gone"), endRequest(Plain, 3000000)};
    const QStringList dismissed{endRequest(Plain, 1000000), CancelledSignal};

    QTest::addColumn<bool>("firstConfirms");
    QTest::addColumn<bool>("secondConfirms");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("dismissed after confirmation") << true << false << confirmed + dismissed;
    QTest::newRow("confirmed after refusal") << false << true << dismissed + confirmedLate;
    QTest::newRow("confirmed twice") << true << true << confirmed + confirmedLate;
    QTest::newRow("dismissed twice") << false << false << dismissed + dismissed;
}

// Required: the answers don't look whether a window is there.
void TransactionViewAnswersTest::handlesASecondAnswer()
{
    QFETCH(bool, firstConfirms);
    QFETCH(bool, secondConfirms);
    QFETCH(QStringList, expected);

    QVERIFY(show());
    QQuickWindow *window = TestDialog::window();
    for (const bool confirms : {firstConfirms, secondConfirms}) {
        confirms ? TestDialog::confirm(window) : TestDialog::dismiss(window);
    }
    QCOMPARE(entries(), expected);

    TestDialog::deleteScheduled();
    QCOMPARE(entries(), expected + QStringList(Destroyed));
}

// Required: nobody takes the first one away.
void TransactionViewAnswersTest::leavesTheFirstOfTwoDialogsAlive()
{
    QVERIFY(show());
    QQuickWindow *first = TestDialog::window();
    m_view->showConfirmation(&m_package);
    TestDialog::deleteScheduled();

    QCOMPARE(TestDialog::windows().size(), 2);
    QVERIFY(first->isVisible());
    QCOMPARE(entries(),
             QStringList(
                     {QStringLiteral("needConfirm"), beginRequest(Plain), QStringLiteral("dialog shown full screen")}));

    TestDialog::dismiss(TestDialog::windows().last());
    TestDialog::deleteScheduled();
    QCOMPARE(TestDialog::windows(), QList<QQuickWindow *>{first});
    QVERIFY(first->isVisible());
    QVERIFY(!m_view->hasWindow());
}

// Required: the answers belong to no window in particular.
void TransactionViewAnswersTest::answersOfTheFirstDialogEndTheSecond()
{
    QVERIFY(show());
    QQuickWindow *first = TestDialog::window();
    m_view->showConfirmation(&m_package);
    m_journal.clear();
    TestDialog::confirm(first);
    TestDialog::deleteScheduled();

    QCOMPARE(entries(), QStringList({ConfirmedSignal, endRequest(Plain, 3000000), Destroyed}));
    QCOMPARE(TestDialog::window(), first);
}

int main(int argc, char **argv)
{
    return runOnDevice<TransactionViewAnswersTest>(argc, argv);
}

#include "tst_transactionviewanswers.moc"
