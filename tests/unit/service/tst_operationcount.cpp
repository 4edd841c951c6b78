// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "devicefile.h"
#include "handlerfixture.h"
#include "testrunner.h"

#include <QElapsedTimer>
#include <QTimer>

namespace {

const QString Plain = "plain"_s;
const QString Idle = "idle"_s;
const QString Destroyed = "dialog destroyed"_s;

}

/** The count of operations, which decides whether the handler is idle, and the idle time. */
class OperationCountTest : public HandlerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void countsFromStartToEnd()
    {
        QCOMPARE(state(), Idle);
        m_handler->installFiles({packageFile(Plain)});
        QCOMPARE(state(), "1 running, 0 waiting"_s);
        QCOMPARE(entries(), asking(Plain));

        m_journal.clear();
        confirm();
        QCOMPARE(state(), "1 running, 0 waiting"_s);
        const QStringList expected{installCall(packageFile(Plain)), endRequest(Plain, 3000000), Destroyed, succeeded()};
        QCOMPARE(settledEntries(expected.size()), expected);
        QCOMPARE(state(), Idle);
    }

    void countsTransactionsThatEndInTheirStart()
    {
        m_handler->installFiles({});
        QCOMPARE(entries(), QStringList(succeeded()));
        QCOMPARE(state(), Idle);

        const DeviceFile policy("/etc/velmora/access-policy.conf"_s, "[Applications]\nInstallationEnabled=false\n");
        m_journal.clear();
        m_handler->installFiles({packageFile(Plain)});
        QVERIFY(entries().value(1).startsWith("installFinished badly "_s));
        QVERIFY(entries().value(1).endsWith("1 running, 0 waiting"_s));
        QCOMPARE(state(), Idle);
    }

    // The service never becomes idle but takes further requests. Known behaviour 52.
    void countsATransactionWithoutADialog()
    {
        m_dialog->remove();
        m_handler->setEngine(makeEngine());
        m_handler->installFiles({packageFile(Plain)});
        QVERIFY(settle());
        QCOMPARE(entries().size(), 5);
        QCOMPARE(state(), "1 running, 0 waiting"_s);

        m_journal.clear();
        m_handler->installFiles({});
        QCOMPARE(entries(), QStringList(succeeded("2 running, 0 waiting"_s)));
        QCOMPARE(state(), "1 running, 0 waiting"_s);
    }

    // Known behaviour 23.
    void noticesOneEndTooMany()
    {
        HandlerInternals::endTransaction(m_handler.get());
        QCOMPARE(entries(), QStringList("warning: Transaction count out of sync!"_s));
        QCOMPARE(state(), Idle);

        m_handler->installFiles({packageFile(Plain)});
        QCOMPARE(state(), "1 running, 0 waiting"_s);
    }

    // An end while the timer runs gives the next request the whole time again.
    void beginsTheIdleTimeAnew()
    {
        constexpr int IdleTime = 30000;
        constexpr int Rounding = 5;
        QTimer *timer = &HandlerInternals::idleTimer(m_handler.get());
        QCOMPARE(timer->interval(), IdleTime);
        // The product's timer counts in whole seconds.
        timer->setTimerType(Qt::PreciseTimer);
        timer->start();
        QTRY_VERIFY_WITH_TIMEOUT(timer->remainingTime() < IdleTime - 200, WaitLimit);

        QElapsedTimer since;
        since.start();
        HandlerInternals::endTransaction(m_handler.get());
        const int remaining = timer->remainingTime();
        QVERIFY(remaining >= IdleTime - since.elapsed() - Rounding);
    }
};

VELMORA_TEST(OperationCountTest, Device, Gui)

#include "tst_operationcount.moc"
