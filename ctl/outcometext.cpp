// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "outcometext.h"

#include "fillin.h"
#include "print.h"

#include <QCoreApplication>

namespace {

QString removing(const Subject &subject)
{
    if (subject.count == 1) {
        //: A package is being removed
        //% "removing"
        return qtTrId("installctl-removing");
    }
    //: A package is being removed; %1 and %2 are numbers
    //% "removing %1 of %2"
    return fillIn(qtTrId("installctl-removing-of"), QString::number(subject.position), QString::number(subject.count));
}

QString done(const Subject &subject)
{
    if (subject.kind == Subject::PackageFile) {
        //: A package has been installed
        //% "installed"
        return qtTrId("installctl-installed");
    }
    //: A package has been removed
    //% "removed"
    return qtTrId("installctl-removed");
}

}

QString OutcomeText::of(const Subject &subject, State state)
{
    switch (state) {
    case State::Reading:
        //: The service reads a package file
        //% "reading"
        return qtTrId("installctl-reading");
    case State::Confirming:
        //: The service asks the user in a dialog on the screen of the device, and then installs the package
        //% "waiting for your answer on the device's screen, then installing"
        return qtTrId("installctl-confirming");
    case State::Installing:
        //: A package is being installed
        //% "installing"
        return qtTrId("installctl-installing");
    case State::Waiting:
        //: The service has not answered, or does something else at the moment
        //% "waiting for the service"
        return qtTrId("installctl-waiting");
    case State::Removing:
        break;
    }
    return removing(subject);
}

QString OutcomeText::of(const Subject &subject, Outcome outcome)
{
    switch (outcome) {
    case Outcome::Done:
        return done(subject);
    case Outcome::Requested:
        //: The service has taken a request
        //% "requested"
        return qtTrId("installctl-requested");
    case Outcome::Failed:
        //: The reason follows
        //% "failed"
        return qtTrId("installctl-failed");
    case Outcome::Declined:
        //: The user has declined the installation
        //% "declined"
        return qtTrId("installctl-declined");
    case Outcome::Forbidden:
        //: The device's policy forbids the installation
        //% "forbidden"
        return qtTrId("installctl-forbidden");
    case Outcome::Unclear:
        //: It is not known how the request has ended
        //% "unclear"
        return qtTrId("installctl-unclear");
    case Outcome::Unprivileged:
        //: The user may not ask for this
        //% "unprivileged"
        return qtTrId("installctl-unprivileged");
    case Outcome::Timeout:
        //: The time is over
        //% "timeout"
        return qtTrId("installctl-timeout");
    case Outcome::Interrupted:
        //: After Ctrl-C
        //% "interrupted"
        return qtTrId("installctl-interrupted");
    default:
        return QString();
    }
}

QString OutcomeText::join(const QString &word, const Result &result)
{
    QStringList parts{word, onOneLine(result.text)};
    parts.removeAll(QString());
    const QString text = parts.join(QStringLiteral(": "));
    //: %1 is the outcome of a request
    //% "%1 (may be the outcome of another request)"
    return result.uncertain ? fillIn(qtTrId("installctl-uncertain"), text) : text;
}
