// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "handlerinternals.h"
#include "installationfixture.h"
#include "installationhandler.h"
#include "texts.h"

/** The handler with an engine for its dialog. Its signals are in the journal. */
class HandlerFixture : public InstallationFixture
{
    Q_OBJECT

protected Q_SLOTS:
    void init()
    {
        setUp();
        m_handler = std::make_unique<InstallationHandler>();
        m_handler->setEngine(engine());
        connect(m_handler.get(), &InstallationHandler::needConfirm, this, [this] { note("needConfirm"_s); });
        connect(m_handler.get(), &InstallationHandler::installFinished, this,
                [this](bool success, const QString &errorString) { note(finished(success, errorString, state())); });
        settle();
        m_journal.clear();
    }

    void cleanup()
    {
        // Nobody would release running transactions, which the handler does not own. A cancellation ends them all.
        for (int file = 0; m_handler && file < 10 && state() != "idle"_s; ++file) {
            emit HandlerInternals::view(m_handler.get()).installationCancelled();
        }
        m_handler.reset();
        tearDown();
    }

protected:
    /** For example "1 running, 2 waiting", or "idle" while the idle timer runs. */
    QString state() const
    {
        const int running = HandlerInternals::count(m_handler.get());
        const int waiting = HandlerInternals::pending(m_handler.get()).size();
        if (HandlerInternals::idleTimer(m_handler.get()).isActive()) {
            return running == 0 && waiting == 0 ? "idle"_s : "wrongly idle"_s;
        }
        return "%1 running, %2 waiting"_s.arg(running).arg(waiting);
    }

    /** The user answers the only dialog that there is. */
    static void confirm()
    {
        TestDialog::confirm(TestDialog::window());
        TestDialog::deleteScheduled();
    }

    static void dismiss()
    {
        TestDialog::dismiss(TestDialog::window());
        TestDialog::deleteScheduled();
    }

    /** A journal entry. The state is that at the time of the signal. */
    static QString finished(bool success, const QString &errorString, const QString &state)
    {
        return "installFinished %1 \"%2\" while %3"_s.arg(success ? "well"_s : "badly"_s, errorString, state);
    }

    static QString succeeded(const QString &state = "1 running, 0 waiting"_s) { return finished(true, {}, state); }
    static QString aborted(const QString &state = "1 running, 0 waiting"_s)
    {
        return finished(false, "installationhandler-user-aborted"_s, state);
    }

    std::unique_ptr<InstallationHandler> m_handler;
};
