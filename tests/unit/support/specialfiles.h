// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "texts.h"

#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
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

private:
    Q_DISABLE_COPY_MOVE(ListeningSocket)

    const int m_descriptor;
};

/** A folder with files that wait for somebody at the other end, and with all that a test adds. */
class SpecialFiles
{
public:
    SpecialFiles()
        : m_socket(socket())
        , m_window(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (m_window < 0 || grantpt(m_window) != 0 || unlockpt(m_window) != 0) {
            qFatal("no pseudo-terminal");
        }
        if (!makeFifo("fifo"_s) || !makeLink("link to a fifo"_s, fifo())) {
            qFatal("no FIFO");
        }
    }

    ~SpecialFiles() { close(m_window); }

    /** The path of a file in the folder. */
    QString path(const QString &name) const { return m_folder.filePath(name); }

    QString fifo() const { return path("fifo"_s); }
    QString linkToFifo() const { return path("link to a fifo"_s); }
    QString socket() const { return path("socket"_s); }

    /** A terminal. This process has its other end, as a terminal window has. */
    QString terminal() const { return QFile::decodeName(ptsname(m_window)); }

    bool makeFifo(const QString &name) const { return mkfifo(QFile::encodeName(path(name)).constData(), 0666) == 0; }
    bool makeLink(const QString &name, const QString &target) const { return QFile::link(target, path(name)); }

private:
    Q_DISABLE_COPY_MOVE(SpecialFiles)

    QTemporaryDir m_folder;
    ListeningSocket m_socket;
    int m_window;
};
