// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "installationhandler.h"

/**
 * The private members of the handler. The idle exit takes half a minute, so the tests look at the count and the timer
 * that it depends on.
 */
namespace HandlerInternals {

/** Operations in flight. */
qint32 &count(InstallationHandler *handler);

/** Transactions that have not started. */
QList<InstallTransaction *> &pending(InstallationHandler *handler);

QTimer &idleTimer(InstallationHandler *handler);
TransactionView &view(InstallationHandler *handler);
QDBusInterface &launcherModel(InstallationHandler *handler);
QDBusInterface &developerMode(InstallationHandler *handler);
QDBusInterface &packageManager(InstallationHandler *handler);
QDBusInterface &hooks(InstallationHandler *handler);

/** Ends an operation, whether or not one is in flight. */
void endTransaction(InstallationHandler *handler);

}
