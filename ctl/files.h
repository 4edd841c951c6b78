// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "subject.h"

#include <QByteArray>

/** A file that a command names. */
struct NamedFile
{
    Subject subject;
    /** Why the service cannot be asked about the file; empty if it can. */
    QString problem;
};

/**
 * Finds a package file by the bytes of a path or file URL. Its argument for the service is the path, or a URL where the
 * service would not take the path as it is. In sdk mode there is no such URL, because the service reads the file by
 * this very argument (Known behaviour 14).
 */
NamedFile findPackageFile(const QByteArray &given, bool sdkMode);

/** Finds a launcher file by the bytes of a path or file URL. The service takes paths as they are. */
NamedFile findLauncher(const QByteArray &given);
