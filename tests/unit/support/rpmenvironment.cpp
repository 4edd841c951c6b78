// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "rpmenvironment.h"

#include <QDebug>
#include <QFile>
#include <QProcess>

namespace {

constexpr int importTimeout = 30000; // milliseconds

QString packageFolder()
{
    return QStringLiteral(PACKAGE_FILES "/");
}

}

RpmEnvironment::RpmEnvironment()
    : m_previousHome(qgetenv("HOME"))
{
    qputenv("HOME", QFile::encodeName(m_home.path()));
}

RpmEnvironment::~RpmEnvironment()
{
    qputenv("HOME", m_previousHome);
}

bool RpmEnvironment::useDatabase(const QString &name)
{
    QFile macros(m_home.filePath(QStringLiteral(".rpmmacros")));
    const QByteArray line = "%_dbpath " + QFile::encodeName(m_home.filePath(name)) + '\n';
    return macros.open(QIODevice::WriteOnly) && macros.write(line) == line.size();
}

bool RpmEnvironment::importKey(const QString &file)
{
    QProcess rpm;
    rpm.setProcessChannelMode(QProcess::ForwardedChannels);
    rpm.start(QStringLiteral("rpm"), {QStringLiteral("--import"), packageFolder() + file});
    if (!rpm.waitForFinished(importTimeout)) {
        qWarning() << "rpm --import" << file << "has not ended:" << rpm.errorString();
        return false;
    }
    return rpm.exitStatus() == QProcess::NormalExit && rpm.exitCode() == 0;
}

QString packageFile(const QString &name)
{
    return packageFolder() + name + QLatin1String(".rpm");
}
