// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "texts.h"

#include <QMutex>
#include <QMutexLocker>
#include <QStringList>
#include <QtGlobal>

#include <array>
#include <cstring>

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

/**
 * Notes every line of the process's log in a journal for as long as it lives, for example "warning: text". Lines of a
 * category other than "default" name it: "debug(category): text". The test's own output shows them too. No two objects
 * may live at the same time.
 */
class MessageLog
{
public:
    explicit MessageLog(Journal *journal)
    {
        s_journal = journal;
        s_previous = qInstallMessageHandler(note);
    }

    ~MessageLog() { qInstallMessageHandler(s_previous); }

private:
    Q_DISABLE_COPY_MOVE(MessageLog)

    static void note(QtMsgType level, const QMessageLogContext &context, const QString &text)
    {
        static constexpr std::array<const char *, 5> Levels{"debug", "warning", "critical", "fatal", "info"};
        QString line = QString::fromLatin1(Levels.at(level));
        if (std::strcmp(context.category, "default") != 0) {
            line += "(%1)"_s.arg(QLatin1String(context.category));
        }
        s_journal->add(line + ": "_s + text);
        s_previous(level, context, text);
    }

    static inline Journal *s_journal = nullptr;
    static inline QtMessageHandler s_previous = nullptr;
};
