// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Looking up the launchers of one installed package, microseconds of processor
// time each, in turn: the product's lookup (0) and the same calls of librpm
// bare (1). PROGRAM ROUNDS PACKAGE

#include "barelookup.h"
#include "desktopfiles.h"
#include "stopwatch.h"

#include <QString>
#include <QStringList>

#include <cstdlib>
#include <functional>

int main(int argc, char **argv)
{
    if (argc != 3) {
        fail(QStringLiteral("ROUNDS PACKAGE"));
    }
    const char *package = argv[2];
    // The first one reads librpm's configuration, for both.
    const QStringList launchers = findDesktopFiles(QString::fromLocal8Bit(package));
    if (launchers.isEmpty() || launchers != bareLookup(package)) {
        fail(QStringLiteral("no launchers, or not the same"));
    }
    const std::function<void()> lookups[2] = {
            [&]() { findDesktopFiles(QString::fromLocal8Bit(package)); },
            [&]() { bareLookup(package); },
    };
    printProcessorTimes(std::atoi(argv[1]), lookups);
    return 0;
}
