// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QTest>

/** No wait takes longer, in milliseconds. A busy machine needs some seconds for what is usually done at once. */
constexpr int WaitLimit = 20000;

/** Runs the event loop until a condition holds. When that takes too long, says what it waited for. */
template<typename Condition>
bool waitFor(Condition condition, const char *what)
{
    const bool holds = QTest::qWaitFor(condition, WaitLimit);
    if (!holds) {
        qCritical("Waited %d milliseconds in vain for %s", WaitLimit, what);
    }
    return holds;
}
