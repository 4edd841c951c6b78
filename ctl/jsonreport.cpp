// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "jsonreport.h"

#include "jsonline.h"

#include <QJsonObject>

namespace {

QLatin1String word(State state)
{
    switch (state) {
    case State::Reading:
        return QLatin1String("reading");
    case State::Confirming:
        return QLatin1String("confirming");
    case State::Installing:
        return QLatin1String("installing");
    case State::Waiting:
        return QLatin1String("waiting");
    case State::Removing:
        break;
    }
    return QLatin1String("removing");
}

QJsonObject toJson(const Subject &subject)
{
    return {{QStringLiteral("subject"), subject.name},
            {QStringLiteral("position"), subject.position},
            {QStringLiteral("count"), subject.count}};
}

}

JsonReport::JsonReport(bool isQuiet, QElapsedTimer clock)
    : m_isQuiet(isQuiet)
    , m_clock(clock)
{
}

void JsonReport::showState(const Subject &subject, State state)
{
    if (!m_isQuiet) {
        QJsonObject object = toJson(subject);
        object.insert(QStringLiteral("state"), word(state));
        printJsonLine(QLatin1String("state"), object, m_clock);
    }
}

void JsonReport::showResult(const Subject &subject, const Result &result)
{
    if (!m_isQuiet || !result.isGood()) {
        QJsonObject object = toJson(subject);
        object.insert(QStringLiteral("outcome"), ::word(result.outcome));
        object.insert(QStringLiteral("text"), result.text);
        object.insert(QStringLiteral("reported"), result.reported);
        object.insert(QStringLiteral("uncertain"), result.uncertain);
        printJsonLine(QLatin1String("result"), object, m_clock);
    }
}

void JsonReport::showEnd(Outcome outcome, int status)
{
    if (!m_isQuiet || status != 0) {
        printJsonLine(QLatin1String("end"),
                      {{QStringLiteral("outcome"), ::word(outcome)}, {QStringLiteral("status"), status}}, m_clock);
    }
}
