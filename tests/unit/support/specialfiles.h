// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "listeningsocket.h"
#include "literals.h"

#include <QString>
#include <QTemporaryDir>

/** A folder with files that wait for somebody at the other end, and with all that a test adds. */
class SpecialFiles
{
public:
    SpecialFiles();
    ~SpecialFiles();
    SpecialFiles(const SpecialFiles &) = delete;
    SpecialFiles &operator=(const SpecialFiles &) = delete;

    /** The path of a file in the folder. */
    QString path(const QString &name) const { return m_folder.filePath(name); }

    QString fifo() const { return path("fifo"_s); }
    QString linkToFifo() const { return path("link to a fifo"_s); }
    QString socket() const { return path("socket"_s); }

    /** A terminal. This process has its other end, as a terminal window has. */
    QString terminal() const;

    /** Makes a FIFO. */
    bool makeFifo(const QString &name) const;

    /** Makes a symbolic link. */
    bool makeLink(const QString &name, const QString &target) const;

private:
    QTemporaryDir m_folder;
    ListeningSocket m_socket;
    int m_window;
};
