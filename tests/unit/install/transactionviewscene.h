// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "installationscene.h"

#include "rpminfo.h"
#include "transactionview.h"

class QQmlContext;

/** A dialog controller with an engine, the package "plain" to ask for, and all signals in the journal. */
class TransactionViewScene : public InstallationScene
{
    Q_OBJECT

protected:
    void setUpView();
    void tearDownView();

    /** Gives the controller an engine. */
    void use(QQmlEngine *engine);
    QQmlContext *context() const;

    /** Shows the dialog and clears the journal. False when it isn't there then. */
    bool show();

    /** MCE announces a state, and the controller has heard of it. */
    bool setDisplay(const QByteArray &state);

    /** ", window there" or ", window gone": what the controller says about its window. */
    QString presence() const;

    RpmInfo m_package;
    std::unique_ptr<TransactionView> m_view;

private:
    QQmlEngine *m_used = nullptr;
};
