// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Time from the call to installFinished, in microseconds, of silent
// installations by services that run already, one after the other in turn:
// PROGRAM ROUNDS FOLDER SERVICE...
// All files of the folder are installed in one transaction.

#include "requests.h"
#include "stopwatch.h"

#include <QCoreApplication>
#include <QDir>

#include <memory>
#include <vector>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const int rounds = arguments.takeFirst().toInt();

    const QDir folder(arguments.takeFirst());
    QStringList files;
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    for (const QString &name : names) {
        files.append(folder.absoluteFilePath(name));
    }

    std::vector<std::unique_ptr<Requests>> services;
    for (const QString &service : qAsConst(arguments)) {
        services.push_back(std::make_unique<Requests>(service, QStringLiteral("installFinished")));
    }
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < services.size(); ++i) {
            print(static_cast<int>(i), services[i]->install(files));
        }
    }
    return 0;
}
