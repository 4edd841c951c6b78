// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// To be preloaded into programs under QEMU's emulation of processes. Before release 8 it has no file descriptors of
// processes, but Qt finds that they are there, and then cannot start a process. Here Qt finds none, and starts
// processes as before them.

#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <stdarg.h>
#include <stdlib.h>
#include <sys/syscall.h>
#include <sys/wait.h>

// Programs that are started are not emulated, and cannot load this library.
__attribute__((constructor)) static void leaveEnvironment(void)
{
    unsetenv("LD_PRELOAD");
}

long syscall(long number, ...)
{
    long arguments[6];
    va_list list;
    va_start(list, number);
    for (int index = 0; index < 6; ++index) {
        arguments[index] = va_arg(list, long);
    }
    va_end(list);
    if (number == SYS_waitid && (int)arguments[0] == P_PIDFD) {
        errno = ENOSYS;
        return -1;
    }
    long (*real)(long, ...) = (long (*)(long, ...))dlsym(RTLD_NEXT, "syscall");
    return real(number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4], arguments[5]);
}
