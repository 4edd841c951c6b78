// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

/** What has to be so before PackageKit's library is used. */
namespace PackageKitAccess {

/**
 * Gets ready for a request and says whether it may be made at all; call it before
 * every one.
 *
 * Without the system bus it may not, and fails with SystemBus::NotConnected: the
 * library never reports an end on a bus that was never there, and QtDBus aborts
 * the process when the library connects to signals on a bus that is gone.
 *
 * With it, the process is subscribed, once, to the signals of all of PackageKit's
 * transactions: the bus limits how many match rules a connection may have, and the
 * library's own for each transaction would be refused from about two dozen
 * transactions side by side on.
 */
bool prepare();

}
