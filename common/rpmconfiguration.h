// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

/** librpm's configuration: its macros and rpmrc files, which a process has to read before it uses librpm. */
namespace RpmConfiguration {

/** Drops what librpm has loaded and logged, and loads its configuration anew; for reading package files. */
void reload();

/** Reads the configuration at the first call, and does nothing at any later one; for the RPM database. */
void loadOnce();

}
