// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "texts.h"

#include <QFile>
#include <QTemporaryDir>

/**
 * A configuration of librpm for as long as the object lives. It is small, because the product reads it with each
 * package. There is no database, and so no key.
 */
class SmallRpmConfiguration
{
public:
    SmallRpmConfiguration()
    {
        write("rpmrc"_s, {});
        write("macros"_s, "%_dbpath " + QFile::encodeName(m_folder.filePath("database"_s)) + '\n');
        qputenv("RPM_CONFIGDIR", QFile::encodeName(m_folder.path()));
    }

private:
    Q_DISABLE_COPY_MOVE(SmallRpmConfiguration)

    void write(const QString &name, const QByteArray &contents) const
    {
        QFile file(m_folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
            qFatal("%s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
        }
    }

    QTemporaryDir m_folder;
};
