// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

/**
 * The service mode: builds the application, installs the translations,
 * publishes the InstallationHandler on the session bus and runs the event loop
 * until the handler's idle timer ends it. argc and argv go to the application
 * object and must outlive the call.
 *
 * Returns the exit status: the event loop's, or 1 after a warning when the
 * session bus, the object path or the bus name cannot be had.
 */
int runService(int &argc, char **argv);
