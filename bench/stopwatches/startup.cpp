// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Wall time from exec to the name on the bus, in microseconds:
// PROGRAM ROUNDS SERVICE COMMAND [SERVICE COMMAND]...

#include "serviceprocess.h"
#include "stopwatch.h"

#include <QCoreApplication>

#include <memory>
#include <vector>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const int rounds = arguments.takeFirst().toInt();

    std::vector<std::unique_ptr<ServiceProcess>> processes;
    for (int i = 0; i + 1 < arguments.size(); i += 2) {
        processes.push_back(
                std::make_unique<ServiceProcess>(arguments.at(i), arguments.at(i + 1).split(QLatin1Char(' '))));
    }
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < processes.size(); ++i) {
            print(static_cast<int>(i), processes[i]->start());
            processes[i]->stop();
        }
    }
    return 0;
}
