// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "help.h"

#include <QCoreApplication>
#include <QString>

namespace {

QString usage()
{
    return QStringLiteral("velmora-installctl install [--sdk] [--keep-user-data] [--notify | --no-wait]\n"
                          "                           [--timeout SECONDS] [--json] [--quiet] FILE...\n"
                          "velmora-installctl remove [--keep-user-data] [--no-wait]\n"
                          "                          [--timeout SECONDS] [--json] [--quiet] NAME...\n"
                          "velmora-installctl remove --launcher FILE [--no-wait]\n"
                          "                          [--timeout SECONDS] [--json] [--quiet]\n"
                          "velmora-installctl monitor [--timeout SECONDS] [--json]\n"
                          "velmora-installctl --help | --version\n");
}

QString line(const char *term, const QString &text)
{
    return QStringLiteral("  %1 %2\n").arg(QLatin1String(term), -17).arg(text);
}

QString options()
{
    return
            //: An option
            //% "install in sdk mode, without a question if allowed"
            line("--sdk", qtTrId("installctl-help-sdk"))
            //: An option
            //% "keep the data of the application"
            + line("--keep-user-data", qtTrId("installctl-help-keep-user-data"))
            //: An option
            //% "remove the application of a launcher"
            + line("--launcher FILE", qtTrId("installctl-help-launcher"))
            //: An option
            //% "also show desktop notifications"
            + line("--notify", qtTrId("installctl-help-notify"))
            //: An option
            //% "do not wait for the outcome"
            + line("--no-wait", qtTrId("installctl-help-no-wait"))
            //: An option
            //% "wait no longer than this, 0 for no limit"
            + line("--timeout SECONDS", qtTrId("installctl-help-timeout"))
            //: An option
            //% "print JSON objects, one a line"
            + line("--json", qtTrId("installctl-help-json"))
            //: An option
            //% "print errors only"
            + line("--quiet", qtTrId("installctl-help-quiet"))
            //: An option
            //% "print this text"
            + line("-h, --help", qtTrId("installctl-help-help"))
            //: An option
            //% "print the version"
            + line("--version", qtTrId("installctl-help-version"));
}

QString statuses()
{
    return
            //: An exit status
            //% "done"
            line("0", qtTrId("installctl-help-done"))
            //: An exit status
            //% "something has failed"
            + line("1", qtTrId("installctl-help-failed"))
            //: An exit status
            //% "the user has declined"
            + line("2", qtTrId("installctl-help-declined"))
            //: An exit status
            //% "the device's policy forbids it"
            + line("3", qtTrId("installctl-help-forbidden"))
            //: An exit status
            //% "the outcome is not known, or may be that of another request"
            + line("4", qtTrId("installctl-help-unclear"))
            //: An exit status
            //% "bad command line"
            + line("64", qtTrId("installctl-help-usage"))
            //: An exit status
            //% "a file cannot be used; nothing was requested"
            + line("66", qtTrId("installctl-help-problem"))
            //: An exit status
            //% "no session bus or no service"
            + line("69", qtTrId("installctl-help-unavailable"))
            //: An exit status
            //% "done, but the output could not be written"
            + line("74", qtTrId("installctl-help-unwritten"))
            //: An exit status
            //% "the caller may not ask for this"
            + line("77", qtTrId("installctl-help-unprivileged"))
            //: An exit status
            //% "the time is over; the service goes on"
            + line("124", qtTrId("installctl-help-timed-out"))
            //: An exit status
            //% "interrupted by a signal; the service goes on"
            + line("129, 130, 143", qtTrId("installctl-help-interrupted"));
}

}

QString helpText()
{
    return usage()
            + QLatin1Char('\n')
            //: A heading
            //% "Options:"
            + qtTrId("installctl-help-options") + QLatin1Char('\n') + options()
            + QLatin1Char('\n')
            //: A heading
            //% "Exit status:"
            + qtTrId("installctl-help-statuses") + QLatin1Char('\n') + statuses();
}
