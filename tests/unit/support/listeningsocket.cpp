// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "listeningsocket.h"

#include <QFile>

#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

ListeningSocket::ListeningSocket(const QString &path)
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

ListeningSocket::~ListeningSocket()
{
    close(m_descriptor);
}
