// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

#include <memory>

struct _GKeyFile;
using GKeyFile = struct _GKeyFile;

/**
 * One desktop entry (freedesktop.org), read when it is constructed.
 *
 * Keys are named "Group/Key". A file that isn't a regular one, can't be read, is
 * larger than 4 MiB or isn't a key file has no keys. If a key or group is repeated,
 * the last value counts. No function blocks.
 */
class MDesktopEntry
{
public:
    explicit MDesktopEntry(const QString &fileName);

    /** Whether the entry has key. */
    bool contains(const QString &key) const;

    /**
     * The value of key with the escape sequences \s, \n, \t, \r and \\ resolved. Other backslashes stay. Empty if the
     * key is absent or its value is not UTF-8 text.
     */
    QString value(const QString &key) const;

private:
    struct Release
    {
        void operator()(GKeyFile *keys) const;
    };
    std::unique_ptr<GKeyFile, Release> m_keys;
};
