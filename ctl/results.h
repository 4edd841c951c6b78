// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "outcome.h"

#include <QString>

/** The ends of requests that the service has not reported by a signal, with their texts. */
namespace Results {

Result failed(const QString &text);
Result unprivileged(const QString &text);
/** text: why the service cannot be called. */
Result unavailable(const QString &text);
/** text: why the bus cannot be reached. */
Result noBus(const QString &text);
/** The bus has gone, and nothing is requested. */
Result busGone();
/** seconds: the bus had so long to answer. */
Result silentBus(int seconds);
Result problem(const QString &text);

/** The bus has gone during a request. */
Result busLost();
/** The service has gone during a request. */
Result serviceEnded();
/** The service has sent a signal whose values are not those of the bus interface. */
Result nonsense();
/** seconds: the service had so long to answer. */
Result unanswered(int seconds);
/** seconds: the service had so long to start and to answer. */
Result notStarted(int seconds);
/** seconds: the request had so long to end. */
Result unfinished(int seconds);
/** The service goes on. */
Result interrupted();
/** The service has not started. */
Result interruptedStart();
Result unrequested();

/** There is no report, and the launcher is gone. */
Result launcherGone();
/** There is no report, and the launcher is still there. */
Result launcherThere();

}
