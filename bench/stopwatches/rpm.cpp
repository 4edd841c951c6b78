// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// The service's own functions that call librpm, beside the bare calls, in microseconds of processor time:
// PROGRAM read ROUNDS FILE...: reads of each file; service, floor, service, floor ...
// PROGRAM lookup ROUNDS PACKAGE DATABASE...: looks up the package's launchers in each RPM database, in the same order
// PROGRAM memory READS FILE: bytes of memory that the service gains by each read

#include "barerpm.h"
#include "desktopfiles.h"
#include "rpminfo.h"
#include "stopwatch.h"

#include <QCoreApplication>
#include <QFile>

#include <rpm/rpmmacro.h>

#include <malloc.h>

#include <ctime>

namespace {

// Until librpm and the allocator have settled.
constexpr int WarmUp = 100;

double processorTime()
{
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return 1e6 * static_cast<double>(time.tv_sec) + 1e-3 * static_cast<double>(time.tv_nsec);
}

double timeOf(const std::function<void()> &function)
{
    const double begun = processorTime();
    function();
    return processorTime() - begun;
}

double memoryInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

void measureReads(int rounds, const QStringList &files)
{
    RpmInfo info;
    std::vector<std::function<double()>> functions;
    for (const QString &file : files) {
        info.readPackage(file);
        if (!info.isValid()) {
            fail(QStringLiteral("cannot be read: ") + file);
        }
        functions.emplace_back([&info, file] { return timeOf([&] { info.readPackage(file); }); });
        functions.emplace_back(
                [path = QFile::encodeName(file)] { return timeOf([&] { BareRpm::read(path.constData()); }); });
    }
    measureInTurn(rounds, functions);
}

void useDatabase(const QByteArray &folder)
{
    rpmPopMacro(nullptr, "_dbpath");
    rpmPushMacro(nullptr, "_dbpath", nullptr, folder.constData(), RMIL_CMDLINE);
}

void measureLookups(int rounds, const QString &package, const QStringList &databases)
{
    const QByteArray name = package.toLocal8Bit();
    // The first lookups read librpm's configuration, which would replace the macro.
    findDesktopFiles(package);
    BareRpm::findLaunchers(name.constData());
    rpmPushMacro(nullptr, "_dbpath", nullptr, "/", RMIL_CMDLINE);
    std::vector<std::function<double()>> functions;
    for (const QString &database : databases) {
        const QByteArray folder = QFile::encodeName(database);
        useDatabase(folder);
        const QStringList launchers = findDesktopFiles(package);
        if (launchers.isEmpty() || launchers != BareRpm::findLaunchers(name.constData())) {
            fail(QStringLiteral("no launchers, or not the same, in ") + database);
        }
        functions.emplace_back([folder, package] {
            useDatabase(folder);
            return timeOf([&] { findDesktopFiles(package); });
        });
        functions.emplace_back([folder, name] {
            useDatabase(folder);
            return timeOf([&] { BareRpm::findLaunchers(name.constData()); });
        });
    }
    measureInTurn(rounds, functions);
}

void measureMemory(int count, const QString &file)
{
    RpmInfo info;
    const auto read = [&](int times) {
        for (int i = 0; i < times; ++i) {
            info.readPackage(file);
        }
    };
    read(WarmUp);
    const double before = memoryInUse();
    read(count);
    const double gained = (memoryInUse() - before) / count;
    measureInTurn(1, {[gained] { return gained; }});
}

}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.size() < 3) {
        fail(QStringLiteral("read|lookup|memory COUNT ARGUMENT..."));
    }
    const QString task = arguments.takeFirst();
    const int count = arguments.takeFirst().toInt();
    if (task == QLatin1String("read")) {
        measureReads(count, arguments);
    } else if (task == QLatin1String("lookup")) {
        measureLookups(count, arguments.constFirst(), arguments.mid(1));
    } else {
        measureMemory(count, arguments.constFirst());
    }
    return 0;
}
