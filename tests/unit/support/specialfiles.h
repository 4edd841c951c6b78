// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "listeningsocket.h"

#include <QString>
#include <QTemporaryDir>

/** A folder with files that wait for somebody at the other end, and with files that only look so. */
class SpecialFiles
{
public:
    SpecialFiles();
    ~SpecialFiles();
    SpecialFiles(const SpecialFiles &) = delete;
    SpecialFiles &operator=(const SpecialFiles &) = delete;

    /** The path of a file in the folder. */
    QString path(const QString &name) const;

    QString fifo() const;
    QString linkToFifo() const;
    QString socket() const;

    /** A terminal: the one that a program would use whose terminal window this process is. */
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
