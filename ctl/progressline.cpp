// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "progressline.h"

#include "terminal.h"

#include <cstdio>

namespace {

constexpr int Second = 1000;
constexpr int SecondsOfMinute = 60;

QString toTime(qint64 milliseconds)
{
    const qint64 seconds = milliseconds / Second;
    return QStringLiteral("%1:%2")
            .arg(seconds / SecondsOfMinute)
            .arg(seconds % SecondsOfMinute, 2, 10, QLatin1Char('0'));
}

// Letters of East Asia take two columns. Some of these do not, and the line is a little shorter then than it could be.
int width(QChar character)
{
    constexpr ushort FirstWide = 0x1100;
    return character.unicode() < FirstWide ? 1 : 2;
}

int width(const QString &text)
{
    int columns = 0;
    for (const QChar character : text) {
        columns += width(character);
    }
    return columns;
}

// Without its begin, the text takes no more than these columns.
QString shorten(const QString &text, int columns)
{
    if (width(text) <= columns) {
        return text;
    }
    const QString ellipsis(QChar(0x2026));
    QString rest = text;
    while (!rest.isEmpty() && width(ellipsis + rest) > columns) {
        rest.remove(0, rest.at(0).isHighSurrogate() ? 2 : 1);
    }
    return ellipsis + rest;
}

void write(const QString &text)
{
    std::fputs(text.toUtf8().constData(), stdout);
    std::fflush(stdout);
}

QString emptyLine()
{
    return QStringLiteral("\r\033[K");
}

}

ProgressLine::ProgressLine(QElapsedTimer clock, QObject *parent)
    : QObject(parent)
    , m_clock(clock)
{
    connect(&m_timer, &QTimer::timeout, this, &ProgressLine::draw);
}

void ProgressLine::show(const QString &subject, const QString &text)
{
    m_subject = subject;
    m_text = text;
    m_timer.start(Second);
    draw();
}

void ProgressLine::clear()
{
    if (m_timer.isActive()) {
        m_timer.stop();
        write(emptyLine());
    }
}

void ProgressLine::draw()
{
    const QString end = QStringLiteral(": %1 (%2)").arg(m_text, toTime(m_clock.elapsed()));
    const int columns = Terminal::columns(stdout);
    // A line that fills the last column moves the cursor to the next one.
    const QString begin = columns == 0 ? m_subject : shorten(m_subject, columns - 1 - width(end));
    write(emptyLine() + begin + end);
}
