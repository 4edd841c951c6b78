// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "journal.h"
#include "literals.h"

#include <QtGlobal>

#include <array>
#include <cstring>

/**
 * Notes every line of the process's log in a journal for as long as it lives,
 * for example "warning: text". Lines of a category other than "default" name it:
 * "debug(category): text". The test's own output shows them too. No two objects
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
