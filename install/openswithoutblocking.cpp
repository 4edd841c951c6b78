// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "openswithoutblocking.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace {

// The devices of the kernel's memory, such as /dev/zero, answer at once. Others may wait for somebody, when they are
// opened or when they are read.
constexpr unsigned int MemoryDevices = 1;

}

bool opensWithoutBlocking(const QByteArray &path)
{
    struct stat status;
    if (stat(path.constData(), &status) != 0) {
        return true;
    }
    const bool mayBlock = S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode)
            || (S_ISCHR(status.st_mode) && major(status.st_rdev) != MemoryDevices);
    return !mayBlock;
}
