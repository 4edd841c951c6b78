// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

/**
 * Subscribes the process, at the first call, to the signals of all transactions
 * of PackageKit (interface org.freedesktop.PackageKit.Transaction). Call it
 * before every request to PackageKit, while the system bus is connected.
 *
 * PackageKit-Qt subscribes to each transaction by itself, with some twenty match
 * rules. The bus allows 512 match rules for a connection, which is enough for about
 * 24 concurrent transactions, and refuses the rules of further ones. One rule for
 * all transactions takes their place.
 */
void subscribeToPackageKitSignals();
