// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "messagelog.h"

#include "journal.h"

#include <cstring>

namespace {

Journal *s_journal = nullptr;
QtMessageHandler s_previous = nullptr;

QString levelName(QtMsgType level)
{
    switch (level) {
    case QtDebugMsg:
        return QStringLiteral("debug");
    case QtInfoMsg:
        return QStringLiteral("info");
    case QtWarningMsg:
        return QStringLiteral("warning");
    case QtCriticalMsg:
        return QStringLiteral("critical");
    case QtFatalMsg:
        return QStringLiteral("fatal");
    }
    Q_UNREACHABLE();
}

void note(QtMsgType level, const QMessageLogContext &context, const QString &text)
{
    QString line = levelName(level);
    if (std::strcmp(context.category, "default") != 0) {
        line += QLatin1Char('(') + QLatin1String(context.category) + QLatin1Char(')');
    }
    s_journal->add(line + QLatin1String(": ") + text);
    s_previous(level, context, text);
}

}

MessageLog::MessageLog(Journal *journal)
{
    s_journal = journal;
    s_previous = qInstallMessageHandler(note);
}

MessageLog::~MessageLog()
{
    qInstallMessageHandler(s_previous);
}
