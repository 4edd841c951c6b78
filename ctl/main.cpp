// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "commandline.h"
#include "outcome.h"
#include "print.h"
#include "program.h"
#include "texts.h"

#include <QCoreApplication>
#include <QElapsedTimer>

namespace {

// A full disk, for example.
int checkOutput(int status)
{
    if (status == 0 && std::ferror(stdout) != 0) {
        //: An error
        //% "the output could not be written"
        printError(qtTrId("installctl-unwritten"));
        return exitStatus(Outcome::Unwritten);
    }
    return status;
}

}

int main(int argc, char **argv)
{
    QElapsedTimer clock;
    clock.start();
    const QCoreApplication application(argc, argv);
    const Texts texts;
    return checkOutput(runProgram(readCommandLine(argc, argv), clock));
}
