// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

/**
 * Runs the service mode: builds the application, installs the translations,
 * publishes the InstallationHandler on the session bus and runs the event loop
 * until the handler's idle timer ends it. argc and argv go to the application
 * object and must outlive the call.
 *
 * Returns the exit status of the event loop. Without the session bus, the object
 * path or the bus name it logs a warning and returns 1.
 */
int runService(int &argc, char **argv);
