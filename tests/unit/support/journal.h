// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QMutex>
#include <QString>
#include <QStringList>

/**
 * What happened, in the order in which it happened, one line each: calls that
 * peers received, signals, log lines. Any thread may add to it.
 */
class Journal
{
public:
    void add(const QString &entry);

    /** Everything since the last clear(). */
    QStringList entries() const;

    void clear();

private:
    mutable QMutex m_mutex;
    QStringList m_entries;
};
