// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "installationscene.h"

#include "handlerinternals.h"
#include "installationhandler.h"

/** The handler with an engine for its dialog, and its signals in the journal. */
class HandlerScene : public InstallationScene
{
    Q_OBJECT

protected:
    void setUpHandler();
    void tearDownHandler();

    /** How busy the handler takes itself to be, for example "1 running, 2 waiting", or "idle" when its timer runs. */
    QString state() const;

    /** The user answers the only dialog that there is. */
    static void confirm();
    static void dismiss();

    /** A journal entry; the state is the one when the signal came. */
    static QString finished(bool success, const QString &errorString, const QString &state);

    std::unique_ptr<InstallationHandler> m_handler;

private:
    void endEverything();
};
