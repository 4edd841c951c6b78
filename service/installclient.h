// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

/**
 * Runs the client mode: asks the service, over the session bus, to install a
 * package file. Blocks until the service has answered the request, but not until
 * the installation has ended.
 *
 * file: path or URL in UTF-8, sent as the user typed it. Returns the exit status,
 * which is 0, or 1 after a warning when the answer is an error.
 */
int requestInstallation(const char *file);
