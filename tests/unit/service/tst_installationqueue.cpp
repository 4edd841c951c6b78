// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "devicefile.h"
#include "handlerfixture.h"
#include "installtransaction.h"
#include "rpminfo.h"
#include "testrunner.h"

#include <QPointer>

namespace {

const QString Plain = "plain"_s;
const QString Translated = "translated"_s;
const QString Idle = "idle"_s;
const QString EmulatorMarker = "/etc/velmoraos-emulator"_s;
const QString Destroyed = "dialog destroyed"_s;

const QByteArray DialogThatDismissesItself = R"(
import QtQuick.Window 2.15

Window {
    signal requestInstall()
    signal dismissed()

    onVisibleChanged: if (visible) dismissed()
}
)";

}

/** The order of transactions and of their dialogs, and how long the transactions live. */
class InstallationQueueTest : public HandlerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void waitsWhileTheDialogIsOnScreen()
    {
        m_handler->installFiles({packageFile(Plain)});
        m_journal.clear();
        m_handler->installFiles({packageFile(Translated)});
        m_handler->installFiles({packageFile(Plain)});
        QVERIFY(settle());
        QCOMPARE(entries(), QStringList());
        QCOMPARE(state(), "1 running, 2 waiting"_s);

        // Each transaction starts after the end of the one before is on the bus.
        dismiss();
        QCOMPARE(entries(),
                 QStringList({endRequest(Plain, 1000000), aborted("1 running, 2 waiting"_s)}) + asking(Translated)
                         + QStringList(Destroyed));
        QCOMPARE(state(), "1 running, 1 waiting"_s);

        // The third one needs no dialog.
        const DeviceFile emulator(EmulatorMarker);
        m_journal.clear();
        dismiss();
        const QStringList expected{endRequest(Translated, 1000000),
                                   aborted("1 running, 1 waiting"_s),
                                   readLine(Plain),
                                   silenceQuery(),
                                   confirmWarning("The installation is not running in sdk mode. "_s),
                                   installCall(packageFile(Plain)),
                                   succeeded()};
        QStringList happened = settledEntries(expected.size() + 1);
        QCOMPARE(happened.removeAll(Destroyed), 1);
        QCOMPARE(happened, expected);
        QCOMPARE(state(), Idle);
    }

    // Known behaviour 54.
    void runsSideBySideWithoutDialog()
    {
        const DeviceFile emulator(EmulatorMarker);
        m_peer->answer("Install"_s, PeerAnswer::held());
        m_handler->installFiles({packageFile(Plain)});
        m_handler->installFiles({packageFile(Translated)});
        QCOMPARE(state(), "2 running, 0 waiting"_s);
        QTRY_COMPARE_WITH_TIMEOUT(entries().filter(".Install("_s),
                                  QStringList({installCall(packageFile(Plain)), installCall(packageFile(Translated))}),
                                  WaitLimit);

        m_journal.clear();
        QVERIFY(m_peer->answerHeld(PeerAnswer::error("a.b.Failed")));
        QVERIFY(settle());
        QCOMPARE(state(), "1 running, 0 waiting"_s);
        QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
        QVERIFY(settle());
        QCOMPARE(entries(),
                 QStringList({finished(false, "zarn_installation_error_desc_Failed (code: Failed)"_s,
                                       "2 running, 0 waiting"_s),
                              succeeded()}));
        QCOMPARE(state(), Idle);
    }

    // The dialog has gone, but an earlier request that waited for it comes first.
    void keepsTheOrderOfTheCalls()
    {
        m_peer->answer("Install"_s, PeerAnswer::held());
        m_handler->installFiles({packageFile(Plain)});
        m_handler->installFiles({packageFile(Translated)});
        confirm();
        QCOMPARE(state(), "1 running, 1 waiting"_s);

        m_journal.clear();
        m_handler->installFiles({packageFile(Plain)});
        QCOMPARE(entries(), asking(Translated));
        QCOMPARE(state(), "2 running, 1 waiting"_s);
    }

    // The end of a transaction starts the next one even if a third one's dialog is on screen. Known behaviour 57.
    void showsASecondDialogAfterAnEnd()
    {
        m_peer->answer("Install"_s, PeerAnswer::held());
        DeviceFile emulator(EmulatorMarker);
        m_handler->installFiles({packageFile(Plain)});
        emulator.remove();
        m_handler->installFiles({packageFile(Translated)});
        m_handler->installFiles({packageFile(Plain)});
        QCOMPARE(TestDialog::windows().size(), 1);
        QCOMPARE(state(), "2 running, 1 waiting"_s);

        QVERIFY(settle());
        QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
        QTRY_COMPARE_WITH_TIMEOUT(state(), "2 running, 0 waiting"_s, WaitLimit);
        QCOMPARE(TestDialog::windows().size(), 2);
        QVERIFY(TestDialog::windows().first()->isVisible());
        QVERIFY(TestDialog::windows().last()->isVisible());
    }

    // Known behaviour 63.
    void tellsOnceAfterASecondAnswer()
    {
        m_peer->answer("Install"_s, PeerAnswer::held());
        m_handler->installFiles({packageFile(Plain)});
        m_journal.clear();
        QQuickWindow *window = TestDialog::window();
        TestDialog::confirm(window);
        TestDialog::dismiss(window);

        const QStringList expected{installCall(packageFile(Plain)), endRequest(Plain, 3000000),
                                   endRequest(Plain, 1000000), aborted()};
        QVERIFY(settle());
        QCOMPARE(entries(), expected);
        QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
        QVERIFY(settle());
        QCOMPARE(entries(), expected);
        QCOMPARE(state(), Idle);
    }

    // Known behaviour 55, 56.
    void cancelsTwoWithOneAnswer()
    {
        m_peer->answer("Install"_s, PeerAnswer::held());
        m_handler->installFiles({packageFile(Plain)});
        confirm();
        m_handler->installFiles({packageFile(Translated)});
        QVERIFY(settle());
        m_journal.clear();
        dismiss();

        QCOMPARE(entries(),
                 QStringList(
                         {endRequest(Translated, 1000000), aborted("2 running, 0 waiting"_s), aborted(), Destroyed}));
        QCOMPARE(state(), Idle);
    }

    // The requests behind the next dialog go on waiting.
    void goesOnToTheNextDialogInsideAnEnd()
    {
        m_handler->installFiles({packageFile(Plain)});
        m_handler->installFiles({});
        m_handler->installFiles({packageFile(Plain)});
        m_handler->installFiles({});
        m_journal.clear();
        dismiss();

        QCOMPARE(entries(),
                 QStringList({endRequest(Plain, 1000000), aborted("1 running, 3 waiting"_s),
                              succeeded("1 running, 2 waiting"_s)})
                         + asking(Plain) + QStringList(Destroyed));
        QCOMPARE(state(), "1 running, 1 waiting"_s);
    }

    // A dialog that dismisses itself while it is shown first ends the transaction that is installing. The next ones
    // follow that end before the dialog's own transaction ends. Known behaviour 56.
    void goesOnInsideAnotherEnd()
    {
        m_peer->answer("Install"_s, PeerAnswer::held());
        m_handler->installFiles({packageFile(Plain)});
        confirm();
        RpmInfo package;
        TransactionView *view = &HandlerInternals::view(m_handler.get());
        view->showConfirmation(&package);
        m_handler->installFiles({packageFile(Plain)});
        m_handler->installFiles({});
        view->closeWindow();
        TestDialog::deleteScheduled();

        m_dialog->write(DialogThatDismissesItself);
        m_handler->setEngine(makeEngine());
        m_journal.clear();
        m_handler->installFiles({});

        QCOMPARE(entries().filter("installFinished"_s),
                 QStringList({aborted("2 running, 2 waiting"_s), succeeded("2 running, 1 waiting"_s),
                              succeeded("2 running, 0 waiting"_s), aborted()}));
        QCOMPARE(state(), Idle);
    }

    // A transaction that is started inside the end of the one before needs no stack of its own.
    void endsAnyNumberInARow()
    {
        constexpr int Many = 100000;
        m_handler->installFiles({packageFile(Plain)});
        for (int i = 0; i < Many; ++i) {
            m_handler->installFiles({});
        }
        QCOMPARE(state(), "1 running, %1 waiting"_s.arg(Many));
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

    void takesCallsInsideAnEnd()
    {
        int more = 2;
        connect(m_handler.get(), &InstallationHandler::installFinished, this, [&] {
            if (more-- > 0) {
                m_handler->installFiles({});
            }
        });
        m_handler->installFiles({});

        QCOMPARE(entries(),
                 QStringList({succeeded(), succeeded("2 running, 0 waiting"_s), succeeded("3 running, 0 waiting"_s)}));
        QCOMPARE(state(), Idle);
    }

    void releasesFinishedTransactions()
    {
        RpmInfo package;
        TransactionView *view = &HandlerInternals::view(m_handler.get());
        view->showConfirmation(&package);
        m_handler->installFiles({});
        const QPointer<InstallTransaction> transaction = HandlerInternals::pending(m_handler.get()).value(0);
        QVERIFY(transaction);

        view->closeWindow();
        TestDialog::deleteScheduled();
        m_journal.clear();
        m_handler->installFiles({});
        QCOMPARE(entries(), QStringList({succeeded("1 running, 1 waiting"_s), succeeded()}));
        QVERIFY(transaction);
        TestDialog::deleteScheduled();
        QVERIFY(!transaction);
    }

    // The handler does not own the transactions that have not started.
    void leavesWaitingTransactionsAlive()
    {
        RpmInfo package;
        HandlerInternals::view(m_handler.get()).showConfirmation(&package);
        m_handler->installFiles({packageFile(Plain)});
        const QPointer<InstallTransaction> transaction = HandlerInternals::pending(m_handler.get()).value(0);
        m_journal.clear();
        m_handler.reset();
        TestDialog::deleteScheduled();

        QVERIFY(transaction);
        QCOMPARE(entries(), QStringList(Destroyed));
        delete transaction;
    }
};

VELMORA_TEST(InstallationQueueTest, Device, Gui)

#include "tst_installationqueue.moc"
