// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

class QString;

/** The summary of commands, options and exit statuses, in the user's language. */
QString helpText();
