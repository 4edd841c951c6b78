// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

/**
 * The client mode: asks the running service over the session bus to install
 * the package file that the user named on the command line, UTF-8, and sends
 * it just as it was typed. Blocks until the service has answered the request;
 * the outcome of the installation is not waited for.
 *
 * Returns the exit status: 0, or 1 after a warning when the answer is an error.
 */
int requestInstallation(const char *file);
