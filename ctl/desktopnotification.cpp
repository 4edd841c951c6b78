// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopnotification.h"

#include "outcometext.h"
#include "print.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

namespace {

// A notification service that is silent must not keep the program for long. In milliseconds.
constexpr int CallTimeout = 3000;

QDBusMessage createCall(const QString &method)
{
    const QString name = QStringLiteral("org.freedesktop.Notifications");
    return QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/Notifications"), name, method);
}

QString fileName(const Subject &subject)
{
    return subject.given.section(QLatin1Char('/'), -1, -1, QString::SectionSkipEmpty);
}

// The service's own text says more than the word for the outcome.
QString reason(const Subject &subject, const Result &result)
{
    return result.uncertain || result.text.isEmpty()
            ? OutcomeText::join(OutcomeText::of(subject, result.outcome), result)
            : onOneLine(result.text);
}

}

void DesktopNotification::showState(const Subject &subject, State)
{
    if (m_position != subject.position) {
        m_position = subject.position;
        //: Title of a notification
        //% "Installing…"
        m_shown = publish({QStringLiteral("system-software-install"), qtTrId("installctl-notification-installing"),
                           fileName(subject), 0});
    }
}

void DesktopNotification::showResult(const Subject &subject, const Result &result)
{
    if (result.isGood()) {
        m_installed << fileName(subject);
    } else if (result.outcome != Outcome::Unrequested) {
        m_others << fileName(subject) + QStringLiteral(": ") + reason(subject, result);
    }
}

void DesktopNotification::showEnd(Outcome outcome, int)
{
    // The user knows it.
    if (outcome == Outcome::Declined) {
        close();
        return;
    }
    Content content{QStringLiteral("dialog-error"), QString(), m_others.join(QLatin1Char('\n')), -1};
    if (m_others.isEmpty()) {
        content.icon = QStringLiteral("dialog-information");
        //: Title of a notification
        //% "Installed"
        content.title = qtTrId("installctl-notification-installed");
        content.body = m_installed.join(QLatin1Char('\n'));
    } else {
        //: Title of a notification
        //% "Not installed"
        content.title = qtTrId("installctl-notification-not-installed");
    }
    publish(content).waitForFinished();
}

// The body is markup.
QDBusPendingReply<uint> DesktopNotification::publish(const Content &content) const
{
    QDBusMessage notify = createCall(QStringLiteral("Notify"));
    notify << QStringLiteral("velmora-installctl") << number() << content.icon << content.title
           << content.body.toHtmlEscaped() << QStringList() // actions
           << QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("velmora-installctl")}} << content.expiry;
    return QDBusConnection::sessionBus().asyncCall(notify, CallTimeout);
}

// 0 if there is no notification.
uint DesktopNotification::number() const
{
    if (!m_shown) {
        return 0;
    }
    QDBusPendingReply<uint> reply = *m_shown;
    reply.waitForFinished();
    return reply.isError() ? 0 : reply.value();
}

void DesktopNotification::close() const
{
    QDBusMessage message = createCall(QStringLiteral("CloseNotification"));
    message << number();
    QDBusConnection::sessionBus().call(message, QDBus::Block, CallTimeout);
}
