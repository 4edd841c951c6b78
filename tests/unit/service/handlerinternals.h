// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "installationhandler.h"

/**
 * What the handler keeps for itself. Its idle exit takes half a minute, so the
 * tests look at the count and the timer that it depends on.
 */
namespace HandlerInternals {

/** Operations in flight. */
int count(InstallationHandler *handler);

/** Transactions that have not started. */
QList<InstallTransaction *> pending(InstallationHandler *handler);

QTimer *idleTimer(InstallationHandler *handler);
TransactionView *view(InstallationHandler *handler);

const QDBusInterface &launcherModel(InstallationHandler *handler);
const QDBusInterface &developerMode(InstallationHandler *handler);
const QDBusInterface &packageManager(InstallationHandler *handler);
const QDBusInterface &hooks(InstallationHandler *handler);

/** The package manager has to answer within so many milliseconds. */
void setPackageManagerTimeout(InstallationHandler *handler, int timeout);

/** Ends an operation, whether or not one is in flight. */
void endTransaction(InstallationHandler *handler);

}
