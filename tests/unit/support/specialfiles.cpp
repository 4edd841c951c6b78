// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "specialfiles.h"

#include <QFile>

#include <cstdlib>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

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
    : m_socket(socket())
    , m_window(openWindow())
{
    if (!makeFifo("fifo"_s) || !makeLink("link to a fifo"_s, fifo())) {
        qFatal("no FIFO");
    }
}

SpecialFiles::~SpecialFiles()
{
    close(m_window);
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
