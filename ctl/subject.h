// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/** A package file to install, or a package or launcher to remove. */
struct Subject
{
    enum Kind { PackageFile, Package, Launcher };

    Kind kind = PackageFile;
    /** As the user has called it. */
    QString given;
    /** The absolute path of a file, or the name of a package. */
    QString name;
    /** The string that the service receives. */
    QString argument;
    /** Its number among all subjects of the command, from 1 on. */
    int position = 1;
    /** The number of all subjects. */
    int count = 1;
};
