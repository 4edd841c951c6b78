// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "journal.h"

#include <QMutexLocker>

void Journal::add(const QString &entry)
{
    const QMutexLocker locker(&m_mutex);
    m_entries.append(entry);
}

QStringList Journal::entries() const
{
    const QMutexLocker locker(&m_mutex);
    return m_entries;
}

void Journal::clear()
{
    const QMutexLocker locker(&m_mutex);
    m_entries.clear();
}
