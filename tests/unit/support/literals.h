// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QString>

/** A text, given in UTF-8: "text"_s. */
inline QString operator""_s(const char *text, std::size_t size)
{
    return QString::fromUtf8(text, static_cast<int>(size));
}

/** Bytes: "bytes"_b. */
inline QByteArray operator""_b(const char *bytes, std::size_t size)
{
    return {bytes, static_cast<int>(size)};
}
