// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "textreport.h"

#include "fillin.h"
#include "outcometext.h"
#include "print.h"
#include "terminal.h"

#include <QCoreApplication>

namespace {

// The numbers of a terminal's colours.
QString colour(const Result &result)
{
    if (result.isGood()) {
        return QStringLiteral("32"); // green
    }
    switch (result.told()) {
    case Outcome::Declined:
    case Outcome::Forbidden:
    case Outcome::Unclear:
        return QStringLiteral("33"); // yellow
    default:
        return QStringLiteral("31"); // red
    }
}

QString colourFor(std::FILE *stream, const QString &word, const Result &result)
{
    return word.isEmpty() || !Terminal::hasColours(stream)
            ? word
            : QStringLiteral("\033[%1m%2\033[0m").arg(colour(result), word);
}

void printResult(std::FILE *stream, const Subject &subject, const Result &result)
{
    if (result.outcome == Outcome::Unavailable) {
        printError(onOneLine(result.text));
        return;
    }
    const QString word = colourFor(stream, OutcomeText::of(subject, result.outcome), result);
    printLine(stream, printable(subject.given) + QStringLiteral(": ") + OutcomeText::join(word, result));
}

}

TextReport::TextReport(bool isQuiet, QElapsedTimer clock)
    : m_isQuiet(isQuiet)
{
    if (!isQuiet && Terminal::canChangeLines(stdout)) {
        m_progressLine = std::make_unique<ProgressLine>(clock);
    }
}

void TextReport::showState(const Subject &subject, State state)
{
    const QString text = OutcomeText::of(subject, state);
    if (m_progressLine) {
        m_progressLine->show(printable(subject.given), text);
    } else if (!m_isQuiet) {
        printLine(stdout, printable(subject.given) + QStringLiteral(": ") + text);
    }
}

void TextReport::showResult(const Subject &subject, const Result &result)
{
    if (m_progressLine) {
        m_progressLine->clear();
    }
    m_count = subject.count;
    if (result.outcome == Outcome::Unrequested) {
        ++m_unrequested;
    } else if (!result.isGood()) {
        printResult(stderr, subject, result);
    } else if (!m_isQuiet) {
        printResult(stdout, subject, result);
    }
}

void TextReport::showEnd(Outcome, int)
{
    if (m_unrequested > 0) {
        //: %1 and %2 are numbers of files or packages
        //% "not requested: %1 of %2"
        printError(fillIn(qtTrId("installctl-unrequested"), QString::number(m_unrequested), QString::number(m_count)));
    }
}
