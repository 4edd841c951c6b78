// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QStringList>

/** librpm's calls for the service's two tasks, and as little as possible between them. */
namespace BareRpm {

/** The values of a package file's header that the service shows. */
struct Texts
{
    QString name;
    QString version;
    QString summary;
};

/** Reads a package file. path: a readable, unsigned package, in the local encoding. */
Texts read(const char *path);

/** Looks up the launchers of an installed package. name: in the local encoding. */
QStringList findLaunchers(const char *name);

}
