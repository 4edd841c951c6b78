// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/** What a package file's header says of it. */
struct PackageTexts
{
    QString name;
    QString version;
    QString summary;
};

/**
 * The floor of reading a package file: librpm's calls that a reader makes, and
 * nothing between them. path: a readable, unsigned package, in the local encoding.
 */
PackageTexts bareRead(const char *path);
