// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "openable.h"

#include <rpm/rpmurl.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// librpm takes more than plain paths; this is the file that it will open.
const char *openedFile(const char *path)
{
    const char *file = nullptr;
    return urlPath(path, &file) == URL_IS_DASH ? "/dev/stdin" : file;
}

bool isTerminal(const char *file)
{
    const int fd = open(file, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
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
    const char *file = openedFile(path.constData());
    struct stat status;
    if (stat(file, &status) != 0) {
        return true;
    }
    return !S_ISFIFO(status.st_mode) && !S_ISSOCK(status.st_mode) && !(S_ISCHR(status.st_mode) && isTerminal(file));
}
