// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

class QString;

/** The service's texts of outcomes, in all languages that are installed, and as the identifiers that stand for them. */
namespace ServiceTexts {

/** Whether a text says that the user has declined an installation. */
bool tellsDeclined(const QString &text);

/** Whether a text says that the device's policy forbids installing. */
bool tellsForbidden(const QString &text);

}
