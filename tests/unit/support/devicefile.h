// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>

/**
 * A file at one of the device's absolute paths, with the folders that it needs, for as long as the object lives. An
 * earlier file at the path is restored afterwards.
 */
class DeviceFile
{
public:
    explicit DeviceFile(const QString &path, const QByteArray &contents = {})
        : m_path(path)
        , m_existed(QFile::exists(path))
    {
        if (m_existed) {
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly)) {
                qFatal("%s: %s", qPrintable(path), qPrintable(file.errorString()));
            }
            m_before = file.readAll();
        }
        write(contents);
    }

    ~DeviceFile()
    {
        if (m_existed) {
            write(m_before);
        } else {
            remove();
        }
    }

    /** Replaces the contents. */
    void write(const QByteArray &contents)
    {
        QFile file(m_path);
        if (!QDir().mkpath(QFileInfo(m_path).path()) || !file.open(QIODevice::WriteOnly)
            || file.write(contents) != contents.size()) {
            qFatal("%s: %s", qPrintable(m_path), qPrintable(file.errorString()));
        }
    }

    /** Removes the file before the object ends. */
    void remove() { QFile::remove(m_path); }

private:
    Q_DISABLE_COPY_MOVE(DeviceFile)

    QString m_path;
    bool m_existed;
    QByteArray m_before;
};
