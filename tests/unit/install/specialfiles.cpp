// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "specialfiles.h"

#include <QFile>

#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

int listenAt(const QString &path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, QFile::encodeName(path).constData(), sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0 || listen(socket, 1) != 0) {
        qFatal("no socket at %s", address.sun_path);
    }
    return socket;
}

int openWindow()
{
    const int window = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (window < 0 || grantpt(window) != 0 || unlockpt(window) != 0) {
        qFatal("no pseudo-terminal");
    }
    return window;
}

}

SpecialFiles::SpecialFiles()
    : m_socket(listenAt(socket()))
    , m_window(openWindow())
{
    if (!makeFifo(QStringLiteral("fifo")) || !makeLink(QStringLiteral("link to a fifo"), fifo())) {
        qFatal("no FIFO");
    }
}

SpecialFiles::~SpecialFiles()
{
    close(m_window);
    close(m_socket);
}

QString SpecialFiles::path(const QString &name) const
{
    return m_folder.filePath(name);
}

QString SpecialFiles::fifo() const
{
    return path(QStringLiteral("fifo"));
}

QString SpecialFiles::linkToFifo() const
{
    return path(QStringLiteral("link to a fifo"));
}

QString SpecialFiles::socket() const
{
    return path(QStringLiteral("socket"));
}

QString SpecialFiles::terminal() const
{
    return QFile::decodeName(ptsname(m_window));
}

bool SpecialFiles::makeFifo(const QString &name) const
{
    return mkfifo(QFile::encodeName(path(name)).constData(), 0666) == 0;
}

bool SpecialFiles::makeLink(const QString &name, const QString &target) const
{
    return QFile::link(target, path(name));
}
