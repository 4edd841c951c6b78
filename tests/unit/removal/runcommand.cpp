// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "runcommand.h"

#include <QDebug>
#include <QProcess>

namespace {

constexpr int deadline = 60000; // milliseconds

}

bool runCommand(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(deadline)) {
        qWarning() << program << arguments << "has not ended:" << process.errorString();
        return false;
    }
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}
