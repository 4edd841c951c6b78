// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "handlerscene.h"

#include "devicefile.h"
#include "installtransaction.h"
#include "rpminfo.h"
#include "testrunner.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

namespace {

const QString Plain = QStringLiteral("plain");
const QString Idle = QStringLiteral("idle");
const QString Aborted = QStringLiteral("installationhandler-user-aborted");
const QString Destroyed = QStringLiteral("dialog destroyed");

}

/** When operations begin and end, and whether the handler takes itself to be idle. */
class OperationCountTest : public HandlerScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUpHandler(); }
    void cleanup() { tearDownHandler(); }

    void countsFromStartToEnd();
    void countsWhatEndsInsideItsStart();
    void countsWhatNeverEnds();
    void noticesOneEndTooMany();
    void beginsTheIdleTimeAnew();
    void goesOnInsideAnEnd();
    void goesOnToTheNextDialogInsideAnEnd();
    void goesOnInsideAnotherEnd();
    void endsAnyNumberInARow();
    void takesCallsInsideAnEnd();
    void releasesWhatHasFinished();
    void leavesWaitingTransactionsAlive();
};

void OperationCountTest::countsFromStartToEnd()
{
    const QString oneRunning = QStringLiteral("1 running, 0 waiting");
    QCOMPARE(state(), Idle);
    m_handler->installFiles({packageFile(Plain)});
    QCOMPARE(state(), oneRunning);
    QCOMPARE(entries(), asking(Plain));

    m_journal.clear();
    confirm();
    QCOMPARE(state(), oneRunning);
    const QStringList expected{installCall(packageFile(Plain)), endRequest(Plain, 3000000), Destroyed,
                               finished(true, QString(), oneRunning)};
    QCOMPARE(settledEntries(expected.size()), expected);
    QCOMPARE(state(), Idle);
}

void OperationCountTest::countsWhatEndsInsideItsStart()
{
    const QString oneRunning = QStringLiteral("1 running, 0 waiting");
    m_handler->installFiles({});
    QCOMPARE(entries(), QStringList(finished(true, QString(), oneRunning)));
    QCOMPARE(state(), Idle);

    const DeviceFile policy(QStringLiteral("/etc/velmora/access-policy.conf"),
                            "[Applications]\nInstallationEnabled=false\n");
    m_journal.clear();
    m_handler->installFiles({packageFile(Plain)});
    QVERIFY(entries().value(1).startsWith(QStringLiteral("installFinished badly ")));
    QVERIFY(entries().value(1).endsWith(oneRunning));
    QCOMPARE(state(), Idle);
}

// Required: a dialog that cannot be had keeps the service from ever being idle,
// though not from taking further requests.
void OperationCountTest::countsWhatNeverEnds()
{
    m_dialog->remove();
    m_handler->setEngine(makeEngine());
    m_handler->installFiles({packageFile(Plain)});
    QVERIFY(settle());
    QCOMPARE(entries().size(), 5);
    QCOMPARE(state(), QStringLiteral("1 running, 0 waiting"));

    m_journal.clear();
    m_handler->installFiles({});
    QCOMPARE(entries(), QStringList(finished(true, QString(), QStringLiteral("2 running, 0 waiting"))));
    QCOMPARE(state(), QStringLiteral("1 running, 0 waiting"));
}

void OperationCountTest::noticesOneEndTooMany()
{
    HandlerInternals::endTransaction(m_handler.get());
    QCOMPARE(entries(), QStringList(QStringLiteral("warning: Transaction count out of sync!")));
    QCOMPARE(state(), Idle);

    m_handler->installFiles({packageFile(Plain)});
    QCOMPARE(state(), QStringLiteral("1 running, 0 waiting"));
}

// Whatever ends while the timer runs gives those who come next the whole time.
void OperationCountTest::beginsTheIdleTimeAnew()
{
    constexpr int IdleTime = 30000;
    constexpr int Rounding = 5;
    QTimer *timer = HandlerInternals::idleTimer(m_handler.get());
    QCOMPARE(timer->interval(), IdleTime);
    // As it is, it counts in whole seconds.
    timer->setTimerType(Qt::PreciseTimer);
    timer->start();
    QTRY_VERIFY(timer->remainingTime() < IdleTime - 200);

    QElapsedTimer since;
    since.start();
    HandlerInternals::endTransaction(m_handler.get());
    const int remaining = timer->remainingTime();
    QVERIFY(remaining >= IdleTime - since.elapsed() - Rounding);
}

void OperationCountTest::goesOnInsideAnEnd()
{
    m_handler->installFiles({packageFile(Plain)});
    m_handler->installFiles({});
    m_handler->installFiles({});
    m_journal.clear();
    dismiss();

    QCOMPARE(entries(),
             QStringList({endRequest(Plain, 1000000), finished(false, Aborted, QStringLiteral("1 running, 2 waiting")),
                          finished(true, QString(), QStringLiteral("1 running, 1 waiting")),
                          finished(true, QString(), QStringLiteral("1 running, 0 waiting")), Destroyed}));
    QCOMPARE(state(), Idle);
}

// What is still waiting stays behind the dialog that came up in between.
void OperationCountTest::goesOnToTheNextDialogInsideAnEnd()
{
    m_handler->installFiles({packageFile(Plain)});
    m_handler->installFiles({});
    m_handler->installFiles({packageFile(Plain)});
    m_handler->installFiles({});
    m_journal.clear();
    dismiss();

    QCOMPARE(entries(),
             QStringList({endRequest(Plain, 1000000), finished(false, Aborted, QStringLiteral("1 running, 3 waiting")),
                          finished(true, QString(), QStringLiteral("1 running, 2 waiting"))})
                     + asking(Plain) + QStringList(Destroyed));
    QCOMPARE(state(), QStringLiteral("1 running, 1 waiting"));
}

// A dialog that dismisses itself while it is being shown ends what is already installing first, and that is
// followed by the next ones before the dialog's own transaction ends.
void OperationCountTest::goesOnInsideAnotherEnd()
{
    m_peer->answer(QStringLiteral("Install"), PeerAnswer::held());
    m_handler->installFiles({packageFile(Plain)});
    confirm();
    RpmInfo package;
    TransactionView *view = HandlerInternals::view(m_handler.get());
    view->showConfirmation(&package);
    m_handler->installFiles({packageFile(Plain)});
    m_handler->installFiles({});
    view->closeWindow();
    TestDialog::deleteScheduled();

    m_dialog->write(R"(
import QtQuick.Window 2.15

Window {
    signal requestInstall()
    signal dismissed()

    onVisibleChanged: if (visible) dismissed()
}
)");
    m_handler->setEngine(makeEngine());
    m_journal.clear();
    m_handler->installFiles({});

    QCOMPARE(entries().filter(QStringLiteral("installFinished")),
             QStringList({finished(false, Aborted, QStringLiteral("2 running, 2 waiting")),
                          finished(true, QString(), QStringLiteral("2 running, 1 waiting")),
                          finished(true, QString(), QStringLiteral("2 running, 0 waiting")),
                          finished(false, Aborted, QStringLiteral("1 running, 0 waiting"))}));
    QCOMPARE(state(), Idle);
}

// Each would need a piece of the stack if it were started inside the end of the one before.
void OperationCountTest::endsAnyNumberInARow()
{
    constexpr int Many = 100000;
    m_handler->installFiles({packageFile(Plain)});
    for (int i = 0; i < Many; ++i) {
        m_handler->installFiles({});
    }
    QCOMPARE(state(), QStringLiteral("1 running, %1 waiting").arg(Many));
    disconnect(m_handler.get(), &InstallationHandler::installFinished, this, nullptr);
    int ended = 0;
    int atOnce = 0;
    connect(m_handler.get(), &InstallationHandler::installFinished, this, [&] {
        ++ended;
        atOnce = qMax(atOnce, HandlerInternals::count(m_handler.get()));
    });
    dismiss();

    QCOMPARE(ended, 1 + Many);
    QCOMPARE(atOnce, 1);
    QCOMPARE(state(), Idle);
}

void OperationCountTest::takesCallsInsideAnEnd()
{
    int more = 2;
    connect(m_handler.get(), &InstallationHandler::installFinished, this, [&] {
        if (more-- > 0) {
            m_handler->installFiles({});
        }
    });
    m_handler->installFiles({});

    QCOMPARE(entries(),
             QStringList({finished(true, QString(), QStringLiteral("1 running, 0 waiting")),
                          finished(true, QString(), QStringLiteral("2 running, 0 waiting")),
                          finished(true, QString(), QStringLiteral("3 running, 0 waiting"))}));
    QCOMPARE(state(), Idle);
}

void OperationCountTest::releasesWhatHasFinished()
{
    RpmInfo package;
    TransactionView *view = HandlerInternals::view(m_handler.get());
    view->showConfirmation(&package);
    m_handler->installFiles({});
    const QPointer<InstallTransaction> transaction = HandlerInternals::pending(m_handler.get()).value(0);
    QVERIFY(transaction);

    view->closeWindow();
    TestDialog::deleteScheduled();
    m_journal.clear();
    m_handler->installFiles({});
    QCOMPARE(entries(),
             QStringList({finished(true, QString(), QStringLiteral("1 running, 1 waiting")),
                          finished(true, QString(), QStringLiteral("1 running, 0 waiting"))}));
    QVERIFY(transaction);
    TestDialog::deleteScheduled();
    QVERIFY(!transaction);
}

// Required: the handler goes without what it has not started.
void OperationCountTest::leavesWaitingTransactionsAlive()
{
    RpmInfo package;
    HandlerInternals::view(m_handler.get())->showConfirmation(&package);
    m_handler->installFiles({packageFile(Plain)});
    const QPointer<InstallTransaction> transaction = HandlerInternals::pending(m_handler.get()).value(0);
    m_journal.clear();
    m_handler.reset();
    TestDialog::deleteScheduled();

    QVERIFY(transaction);
    QCOMPARE(entries(), QStringList(Destroyed));
    delete transaction;
}

VELMORA_TEST(OperationCountTest, Gui)

#include "tst_operationcount.moc"
