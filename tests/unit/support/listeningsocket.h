// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QFile>
#include <QString>

#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

/** A socket in the file system. A server listens on it for as long as the object lives. The file stays. */
class ListeningSocket
{
public:
    explicit ListeningSocket(const QString &path)
        : m_descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, QFile::encodeName(path).constData(), sizeof address.sun_path - 1);
        if (bind(m_descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
            || listen(m_descriptor, 1) != 0) {
            qFatal("no socket at %s", address.sun_path);
        }
    }

    ~ListeningSocket() { close(m_descriptor); }

    ListeningSocket(const ListeningSocket &) = delete;
    ListeningSocket &operator=(const ListeningSocket &) = delete;

private:
    const int m_descriptor;
};
