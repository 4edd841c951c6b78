// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/**
 * Whether PackageKit may be asked at all. Without the system bus it may not:
 * its library never reports an end on a bus that was never there, and QtDBus
 * aborts the process when the library connects to signals on a bus that is gone.
 */
namespace PackageKitAccess {

bool isPossible();

/** The details of the error to report when it is not. */
inline const QString Error = QStringLiteral("Not connected to the system bus");

}
