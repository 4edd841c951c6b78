// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QString>

/**
 * A file at one of the device's absolute paths, with the folders that it needs,
 * for as long as the object lives. Whatever was there before is there again
 * afterwards.
 */
class DeviceFile
{
public:
    explicit DeviceFile(const QString &path, const QByteArray &contents = {});
    ~DeviceFile();

    /** Gives the file other contents. */
    void write(const QByteArray &contents);

    /** Takes the file away before the object ends. */
    void remove();

private:
    Q_DISABLE_COPY_MOVE(DeviceFile)

    QString m_path;
    bool m_existed;
    QByteArray m_before;
};
