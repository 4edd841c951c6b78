// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "openswithoutblocking.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool isTerminal(const char *path)
{
    const int fd = open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    const bool terminal = isatty(fd) == 1;
    close(fd);
    return terminal;
}

}

bool opensWithoutBlocking(const QByteArray &path)
{
    struct stat status;
    if (stat(path.constData(), &status) != 0) {
        return true;
    }
    const bool mayBlock = S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode)
            || (S_ISCHR(status.st_mode) && isTerminal(path.constData()));
    return !mayBlock;
}
