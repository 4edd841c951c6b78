// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QStringList>

/**
 * The floor of looking up the launchers of an installed package: librpm's calls
 * and the comparison of each path. name: in the local encoding. librpm's
 * configuration has been read before.
 */
QStringList bareLookup(const char *name);
