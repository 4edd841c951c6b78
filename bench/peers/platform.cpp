// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "platform.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <chrono>

bool DeveloperMode::IsSilentInstallationEnabled()
{
    return true;
}

void PackageManager::Install(const QString &path, const QVariantMap &options)
{
    Q_UNUSED(path)
    Q_UNUSED(options)

    using namespace std::chrono;
    m_stamps.append(duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count());
}

PackageRecord PackageManager::GetPackage(const QString &name)
{
    if (!name.startsWith(QLatin1String("bench-"))) {
        sendErrorReply(QStringLiteral("ru.quon.ZARN.Error.UnknownPackage"), name);
        return {};
    }
    return {{QStringLiteral("name"), name}, {QStringLiteral("version"), QStringLiteral("1.0-1")}};
}

void PackageManager::Remove(const QString &name, const QVariantMap &options)
{
    Q_UNUSED(name)
    Q_UNUSED(options)
}

QList<qlonglong> PackageManager::TakeStamps()
{
    QList<qlonglong> stamps;
    stamps.swap(m_stamps);
    return stamps;
}

void Hooks::OnRemove(const QString &package)
{
    Q_UNUSED(package)
}

void LauncherModel::updatingStarted(const QString &package, const QString &, const QString &, const QString &launcher)
{
    Q_UNUSED(package)
    Q_UNUSED(launcher)
}

void LauncherModel::updatingFinished(const QString &package)
{
    Q_UNUSED(package)
}

QString MceRequests::get_display_status()
{
    return m_state;
}

void MceRequests::notification_begin_req(const QString &name, int duration, int renewal)
{
    Q_UNUSED(name)
    Q_UNUSED(duration)
    Q_UNUSED(renewal)
}

void MceRequests::notification_end_req(const QString &name, int linger)
{
    Q_UNUSED(name)
    Q_UNUSED(linger)
}

void MceRequests::TurnDisplay(const QString &state)
{
    m_state = state;
    QDBusMessage signal =
            QDBusMessage::createSignal(QStringLiteral("/com/nokia/mce/signal"), QStringLiteral("com.nokia.mce.signal"),
                                       QStringLiteral("display_status_ind"));
    QDBusConnection::systemBus().send(signal << state);
}
