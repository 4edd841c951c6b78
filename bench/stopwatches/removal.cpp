// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Time from the call to removalFinished, in microseconds, of removals by
// services that run already, in turn: PROGRAM ROUNDS PACKAGE SERVICE...

#include "requests.h"
#include "stopwatch.h"

#include <QCoreApplication>

#include <memory>
#include <vector>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const int rounds = arguments.takeFirst().toInt();
    const QString package = arguments.takeFirst();

    std::vector<std::unique_ptr<Requests>> services;
    for (const QString &service : qAsConst(arguments)) {
        services.push_back(std::make_unique<Requests>(service, QStringLiteral("removalFinished")));
    }
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < services.size(); ++i) {
            print(static_cast<int>(i), services[i]->remove(package));
        }
    }
    return 0;
}
