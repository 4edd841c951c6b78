// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

class QDBusContext;

/** The check of the rights of a D-Bus caller. */
namespace CallerCheck {

/**
 * Whether the sender of the current method call runs in the group "privileged"
 * or as the user "root", by its entry in /proc. A sender that cannot be found
 * does not.
 *
 * context: the object that handles the call. If the result is false, the call has
 * been answered with org.freedesktop.DBus.Error.AccessDenied, and the method must
 * do nothing more. Blocks until the bus daemon has told the sender's process ID.
 */
bool isPrivileged(const QDBusContext &context);

}
