// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/** What has to be so before PackageKit's library is used. */
namespace PackageKitAccess {

/**
 * Whether PackageKit may be asked at all; call it before every request. Without
 * the system bus it may not: the library never reports an end on a bus that was
 * never there, and QtDBus aborts the process when the library connects to
 * signals on a bus that is gone.
 */
bool prepare();

/** The details of the error to report when it may not. */
inline const QString Error = QStringLiteral("Not connected to the system bus");

}
