// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/** The text of some bytes, or nothing if they are not UTF-8. */
inline std::optional<QString> readUtf8(const QByteArray &bytes)
{
    const QString text = QString::fromUtf8(bytes);
    return text.toUtf8() == bytes ? std::optional(text) : std::nullopt;
}
