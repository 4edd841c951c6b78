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

// Letters of East Asia take two columns. Those of other languages that lie behind the first of these count as two too:
// the line is then shorter than it could be, but never too long.
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

QString ellipsis()
{
    return QString(QChar(0x2026));
}

// The end of a text that takes no more than these columns.
QString endOf(const QString &text, int columns)
{
    QString rest = text;
    while (!rest.isEmpty() && width(rest) > columns - width(ellipsis())) {
        rest.remove(0, rest.at(0).isHighSurrogate() ? 2 : 1);
    }
    return ellipsis() + rest;
}

// The beginning of a text that takes no more than these columns.
QString beginningOf(const QString &text, int columns)
{
    QString rest = text;
    while (!rest.isEmpty() && width(rest) > columns - width(ellipsis())) {
        rest.chop(rest.at(rest.size() - 1).isLowSurrogate() ? 2 : 1);
    }
    return rest + ellipsis();
}

QString fit(const QString &subject, const QString &text, int columns)
{
    const int left = columns - width(text);
    if (width(subject) <= left) {
        return subject + text;
    }
    // A subject of a few letters tells nothing.
    constexpr int Least = 8;
    if (left >= Least) {
        return endOf(subject, left) + text;
    }
    return width(text) <= columns ? text : beginningOf(text, columns);
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
    m_subject = subject + QStringLiteral(": ");
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
    const QString time = QStringLiteral(" (%1)").arg(toTime(m_clock.elapsed()));
    const int columns = Terminal::columns(stdout);
    // A line that fills the last column moves the cursor to the next one.
    const int room = columns - 1 - width(time);
    write(emptyLine() + (columns == 0 ? m_subject + m_text : fit(m_subject, m_text, room)) + time);
}
