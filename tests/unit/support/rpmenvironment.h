// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "texts.h"

#include <QDebug>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

/** The path of one of the packages of the tests, "plain" for plain.rpm. */
inline QString packageFile(const QString &name)
{
    return QStringLiteral(PACKAGE_FILES "/%1.rpm").arg(name);
}

/** A HOME of its own for librpm while the object lives. librpm finds its database there, and in it the keys. */
class RpmEnvironment
{
public:
    RpmEnvironment() { qputenv("HOME", QFile::encodeName(m_home.path())); }
    ~RpmEnvironment() { qputenv("HOME", m_previousHome); }

    /** Makes librpm use the database in a folder of the HOME, from the next reading of its macros on. */
    bool useDatabase(const QString &name)
    {
        QFile macros(m_home.filePath(".rpmmacros"_s));
        const QByteArray line = "%_dbpath " + QFile::encodeName(m_home.filePath(name)) + '\n';
        return macros.open(QIODevice::WriteOnly) && macros.write(line) == line.size();
    }

    /** Adds a public key, with which packages of the tests are signed, to the database in use. */
    bool importKey(const QString &file)
    {
        QProcess rpm;
        rpm.setProcessChannelMode(QProcess::ForwardedChannels);
        rpm.start("rpm"_s, {"--import"_s, QStringLiteral(PACKAGE_FILES "/") + file});
        if (!rpm.waitForFinished(30000)) {
            qWarning() << "rpm --import" << file << "has not ended:" << rpm.errorString();
            return false;
        }
        return rpm.exitStatus() == QProcess::NormalExit && rpm.exitCode() == 0;
    }

private:
    Q_DISABLE_COPY_MOVE(RpmEnvironment)

    QTemporaryDir m_home;
    QByteArray m_previousHome = qgetenv("HOME");
};
