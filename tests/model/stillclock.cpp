// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// A library that is loaded before the C library. The monotonic clock of the process stands still, and is ahead of its
// start by the number of seconds in the file STILL_CLOCK, which may change at any time. A sleeping process notices a
// change when something else wakes it.

#include <cstdint>
#include <cstdlib>
#include <ctime>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

const volatile int64_t *mapped()
{
    const char *path = std::getenv("STILL_CLOCK");
    const int file = path ? open(path, O_RDONLY | O_CLOEXEC) : -1;
    if (file == -1) {
        std::abort();
    }
    void *seconds = mmap(nullptr, sizeof(int64_t), PROT_READ, MAP_SHARED, file, 0);
    close(file);
    return static_cast<const volatile int64_t *>(seconds);
}

}

extern "C" int clock_gettime(clockid_t clock, timespec *time) noexcept
{
    static const auto original = reinterpret_cast<int (*)(clockid_t, timespec *)>(dlsym(RTLD_NEXT, "clock_gettime"));
    if (clock != CLOCK_MONOTONIC) {
        return original(clock, time);
    }
    static const volatile int64_t *const ahead = mapped();
    static const timespec start = [] {
        timespec now;
        original(CLOCK_MONOTONIC, &now);
        return now;
    }();
    *time = {start.tv_sec + *ahead, start.tv_nsec};
    return 0;
}
