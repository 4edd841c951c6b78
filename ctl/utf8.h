// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/** The text of some bytes. Another character stands for what is not UTF-8. */
inline QString decodeUtf8(const QByteArray &bytes)
{
    // QString::fromUtf8() drops a byte order mark at the beginning.
    return QString::fromUtf8('.' + bytes).mid(1);
}

/** The text of some bytes, or nothing if they are not UTF-8. */
inline std::optional<QString> readUtf8(const QByteArray &bytes)
{
    const QString text = decodeUtf8(bytes);
    return text.toUtf8() == bytes ? std::optional(text) : std::nullopt;
}

/** A word of a command line for people: an empty one is two quotation marks, as in a shell. */
inline QString showWord(const QByteArray &word)
{
    return word.isEmpty() ? QStringLiteral("''") : decodeUtf8(word);
}
