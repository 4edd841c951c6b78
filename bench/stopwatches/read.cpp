// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Reads of one package file, the product's reader (0) and the same calls of
// librpm bare (1).
// PROGRAM time ROUNDS FILE: microseconds of processor time a read, in turn
// PROGRAM memory READS FILE 0|1: bytes of memory gained a read

#include "bareread.h"
#include "rpminfo.h"
#include "stopwatch.h"

#include <QFile>
#include <QString>

#include <malloc.h>

#include <cstring>
#include <functional>

namespace {

// Until librpm and the allocator have settled.
constexpr int WarmUp = 100;

double memoryInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

double memoryGained(int count, const std::function<void()> &read)
{
    for (int i = 0; i < WarmUp; ++i) {
        read();
    }
    const double before = memoryInUse();
    for (int i = 0; i < count; ++i) {
        read();
    }
    return (memoryInUse() - before) / count;
}

}

int main(int argc, char **argv)
{
    const bool time = argc == 4 && std::strcmp(argv[1], "time") == 0;
    const bool memory = argc == 5 && std::strcmp(argv[1], "memory") == 0;
    if (!time && !memory) {
        fail(QStringLiteral("time ROUNDS FILE | memory READS FILE 0|1"));
    }
    const char *file = argv[3];
    RpmInfo info;
    const std::function<void()> reads[2] = {
            [&]() { info.readPackage(QFile::decodeName(file)); },
            [&]() { bareRead(file); },
    };
    const int count = std::atoi(argv[2]);
    if (time) {
        printProcessorTimes(count, reads);
    } else {
        const int reader = std::atoi(argv[4]);
        print(reader, memoryGained(count, reads[reader]));
    }
    return info.isValid() || memory ? 0 : 1;
}
