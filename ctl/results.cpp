// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "results.h"

#include "fillin.h"

#include <QCoreApplication>

namespace {

Result make(Outcome outcome, const QString &text)
{
    Result result;
    result.outcome = outcome;
    result.text = text;
    return result;
}

Result makeLast(Outcome outcome, const QString &text)
{
    Result result = make(outcome, text);
    result.last = true;
    return result;
}

}

Result Results::failed(const QString &text)
{
    return make(Outcome::Failed, text);
}

Result Results::unprivileged(const QString &text)
{
    return makeLast(Outcome::Unprivileged, text);
}

Result Results::unavailable(const QString &text)
{
    //: %1 is the reason
    //% "the service is not available: %1"
    return makeLast(Outcome::Unavailable, fillIn(qtTrId("installctl-unavailable"), text));
}

Result Results::noBus(const QString &text)
{
    //: %1 is the reason
    //% "no session bus: %1"
    return makeLast(Outcome::Unavailable, fillIn(qtTrId("installctl-no-bus"), text));
}

Result Results::busGone()
{
    //: An error
    //% "the session bus went away"
    return makeLast(Outcome::Unavailable, qtTrId("installctl-monitor-bus-lost"));
}

Result Results::silentBus(int seconds)
{
    //: The reason why there is no session bus
    //% "it has not answered within %1 s"
    return noBus(fillIn(qtTrId("installctl-bus-silent"), QString::number(seconds)));
}

Result Results::problem(const QString &text)
{
    return make(Outcome::Problem, text);
}

Result Results::busLost()
{
    //: Why it is not known how the request has ended
    //% "the session bus went away before the service reported an outcome"
    return makeLast(Outcome::Unclear, qtTrId("installctl-bus-lost"));
}

Result Results::serviceEnded()
{
    //: Why it is not known how the request has ended
    //% "the service ended before it reported an outcome"
    return make(Outcome::Unclear, qtTrId("installctl-service-ended"));
}

Result Results::nonsense()
{
    //: Why it is not known how the request has ended
    //% "the service reported something that cannot be understood"
    return make(Outcome::Unclear, qtTrId("installctl-nonsense"));
}

Result Results::unanswered(int seconds)
{
    //: The program waits no longer
    //% "no answer within %1 s; the service may go on"
    return makeLast(Outcome::Timeout, fillIn(qtTrId("installctl-unanswered"), QString::number(seconds)));
}

Result Results::notStarted(int seconds)
{
    //: The reason why a service is not available
    //% "it has not started within %1 s"
    return unavailable(fillIn(qtTrId("installctl-not-started"), QString::number(seconds)));
}

Result Results::unfinished(int seconds)
{
    //: The program waits no longer
    //% "no outcome within %1 s; the service goes on"
    return makeLast(Outcome::Timeout, fillIn(qtTrId("installctl-unfinished"), QString::number(seconds)));
}

Result Results::interrupted()
{
    //: After Ctrl-C
    //% "the service goes on"
    return makeLast(Outcome::Interrupted, qtTrId("installctl-goes-on"));
}

Result Results::interruptedStart()
{
    return makeLast(Outcome::Interrupted, QString());
}

Result Results::unrequested()
{
    return make(Outcome::Unrequested, QString());
}

Result Results::launcherGone()
{
    //: Why an application counts as removed; a launcher is a .desktop file
    //% "the launcher is gone, and the service has reported nothing"
    return make(Outcome::Done, qtTrId("installctl-launcher-gone"));
}

Result Results::launcherThere()
{
    //: Why it is not known whether an application has been removed; a launcher is a .desktop file
    //% "the service has reported nothing, and the launcher is still there"
    return make(Outcome::Unclear, qtTrId("installctl-launcher-there"));
}
