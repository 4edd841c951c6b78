// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/**
 * Files and directories of the system that the service reads. No option or
 * environment variable changes them.
 */
namespace SystemPaths {

/** The translation catalogues. */
inline const QString Translations = QStringLiteral("/usr/share/translations");

/** The dialog's QML. */
inline const QString Dialogs = QStringLiteral("/usr/share/velmora-installationhandler/");

/** The launchers of the system's applications. */
inline const QString Applications = QStringLiteral("/usr/share/applications/");

/** Exists on the emulator, where nobody is asked to confirm an installation. */
inline const QString EmulatorMarker = QStringLiteral("/etc/velmoraos-emulator");

}
