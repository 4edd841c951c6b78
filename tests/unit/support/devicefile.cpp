// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "devicefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

DeviceFile::DeviceFile(const QString &path, const QByteArray &contents)
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

DeviceFile::~DeviceFile()
{
    if (m_existed) {
        write(m_before);
    } else {
        remove();
    }
}

void DeviceFile::write(const QByteArray &contents)
{
    QFile file(m_path);
    if (!QDir().mkpath(QFileInfo(m_path).path()) || !file.open(QIODevice::WriteOnly)
        || file.write(contents) != contents.size()) {
        qFatal("%s: %s", qPrintable(m_path), qPrintable(file.errorString()));
    }
}

void DeviceFile::remove()
{
    QFile::remove(m_path);
}
