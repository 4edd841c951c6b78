// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/** Texts for the user about installations that the package manager refused. */
namespace InstallationError {

/**
 * The description of a D-Bus error by its name, for example
 * "No space left (code: NoSpace)". The text is looked up in the package
 * manager's catalogue by the last component of the name; without a translation
 * the identifier stands in for it.
 */
QString describe(const QString &errorName);

}
