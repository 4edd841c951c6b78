// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QStringList>

/**
 * The paths of the launcher files that the native package of this name has
 * installed under /usr/share/applications/, in the order of its file list;
 * empty when there is no such package. For a package that wraps an Android
 * application, the launchers that the Android-support daemon has made for it.
 * Of several installed packages of one name only the first is looked at.
 */
QStringList findDesktopFiles(const QString &name);
