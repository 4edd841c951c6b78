// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

class QDBusContext;

/** Who may call what. */
namespace CallerCheck {

/**
 * Whether the sender of the method call that context is handling runs in the
 * group "privileged" or as the user "root", by its entry in /proc. If not, the
 * call has been answered with org.freedesktop.DBus.Error.AccessDenied and the
 * method must do nothing more. Blocks until the bus daemon has told the
 * sender's process ID; a sender that cannot be found is refused.
 */
bool isPrivileged(const QDBusContext &context);

}
