// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/** A socket in the file system, with somebody who listens for as long as the object lives. Its file stays. */
class ListeningSocket
{
public:
    explicit ListeningSocket(const QString &path);
    ~ListeningSocket();
    ListeningSocket(const ListeningSocket &) = delete;
    ListeningSocket &operator=(const ListeningSocket &) = delete;

private:
    const int m_descriptor;
};
