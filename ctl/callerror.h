// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "outcome.h"

class QDBusMessage;

/** What an error says about a request that it is the reply to. */
Result readCallError(const QDBusMessage &error);
