// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QMutex>
#include <QMutexLocker>
#include <QStringList>

/** Calls that peers received, signals and log lines in their order, a line each. Safe to use from any thread. */
class Journal
{
public:
    void add(const QString &entry)
    {
        const QMutexLocker locker(&m_mutex);
        m_entries.append(entry);
    }

    /** All entries since the last clear(). */
    QStringList entries() const
    {
        const QMutexLocker locker(&m_mutex);
        return m_entries;
    }

    void clear()
    {
        const QMutexLocker locker(&m_mutex);
        m_entries.clear();
    }

private:
    mutable QMutex m_mutex;
    QStringList m_entries;
};
