// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QStringList>

/**
 * Returns the paths of the launchers below /usr/share/applications/ that belong
 * to the native package of this name, in the order of the package's file list, or
 * nothing if the RPM database has no such package. Of several installed packages
 * of the name the first one counts (Known behaviour 19).
 *
 * For a package that wraps an Android application ("ambrel-apk-...") these are the
 * launchers that the Android-support daemon has made for it, found by file name.
 */
QStringList findDesktopFiles(const QString &name);
