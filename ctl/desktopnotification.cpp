// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopnotification.h"

#include "outcometext.h"
#include "print.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QVariantMap>

namespace {

QDBusMessage createCall(const QString &method)
{
    const QString name = QStringLiteral("org.freedesktop.Notifications");
    return QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/Notifications"), name, method);
}

struct Look
{
    QString icon;
    QString title;
};

Look lookOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Done:
        //: Title of a notification
        //% "Installed"
        return {QStringLiteral("dialog-information"), qtTrId("installctl-notification-installed")};
    case Outcome::Unclear:
    case Outcome::Timeout:
    case Outcome::Interrupted:
        //: Title of a notification: nobody knows how the installation has ended or will end
        //% "Outcome not known"
        return {QStringLiteral("dialog-warning"), qtTrId("installctl-notification-unknown")};
    default:
        //: Title of a notification
        //% "Not installed"
        return {QStringLiteral("dialog-error"), qtTrId("installctl-notification-not-installed")};
    }
}

QString fileName(const Subject &subject)
{
    const QString name = subject.name.section(QLatin1Char('/'), -1, -1, QString::SectionSkipEmpty);
    return printable(name.isEmpty() ? subject.given : name);
}

// The service's own text says more than the word for the outcome.
QString reason(const Subject &subject, const Result &result)
{
    return result.uncertain || result.text.isEmpty()
            ? OutcomeText::join(OutcomeText::of(subject, result.outcome), result)
            : onOneLine(result.text);
}

// A screen has room for a few lines.
QStringList shorten(const QStringList &lines)
{
    constexpr int Most = 10;
    if (lines.size() <= Most) {
        return lines;
    }
    return lines.mid(0, Most) << QStringLiteral("%1 +%2").arg(QChar(0x2026)).arg(lines.size() - Most);
}

}

DesktopNotification::DesktopNotification(int timeout)
    : m_timeout(timeout)
{
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
    if (isSilent()) {
        return;
    }
    // The user knows it, or the service shows a notification of its own.
    const bool isKnown = outcome == Outcome::Declined || outcome == Outcome::Forbidden;
    if (isKnown && m_installed.isEmpty()) {
        close();
        return;
    }
    // Without a request there is no doubt about the outcome.
    const Look look = m_shown ? lookOf(isKnown ? Outcome::Done : outcome) : lookOf(Outcome::Unrequested);
    const QStringList &lines = isKnown || m_others.isEmpty() ? m_installed : m_others;
    publish({look.icon, look.title, shorten(lines).join(QLatin1Char('\n')), -1}).waitForFinished();
}

// The body of a notification is markup.
QDBusPendingReply<uint> DesktopNotification::publish(const Content &content) const
{
    QDBusMessage notify = createCall(QStringLiteral("Notify"));
    notify << QStringLiteral("velmora-installctl") << number() << content.icon << content.title
           << content.body.toHtmlEscaped() << QStringList() // actions
           << QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("velmora-installctl")}} << content.expiry;
    return QDBusConnection::sessionBus().asyncCall(notify, m_timeout);
}

// The notification service has not answered, and would not answer the next call either.
bool DesktopNotification::isSilent() const
{
    if (!m_shown) {
        return false;
    }
    QDBusPendingReply<uint> reply = *m_shown;
    reply.waitForFinished();
    return reply.isError() && reply.error().type() == QDBusError::NoReply;
}

// The number of the notification, 0 if there is none. It is known when "Notify" has been answered.
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
    QDBusConnection::sessionBus().call(message, QDBus::Block, m_timeout);
}
