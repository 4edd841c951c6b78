// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QString>

#include <sys/mman.h>
#include <unistd.h>

/** A regular file in memory, for a class that opens a path. */
class InputFile
{
public:
    explicit InputFile(const QByteArray &contents)
        : m_descriptor(memfd_create("input", MFD_CLOEXEC))
    {
        if (write(m_descriptor, contents.constData(), size_t(contents.size())) != contents.size()) {
            qFatal("No file in memory: %s", qPrintable(qt_error_string()));
        }
    }

    ~InputFile() { close(m_descriptor); }

    QString path() const { return QStringLiteral("/proc/self/fd/%1").arg(m_descriptor); }

private:
    Q_DISABLE_COPY_MOVE(InputFile)

    const int m_descriptor;
};
