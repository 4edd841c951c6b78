// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "outcome.h"

class QDBusMessage;

/** The end of a request whose reply is an error, but not that there is none: QDBusError::NoReply. */
Result readCallError(const QDBusMessage &error);
