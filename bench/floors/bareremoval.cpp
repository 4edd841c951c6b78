// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "bareremoval.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>

BareRemoval::BareRemoval()
    : m_packageManager(QStringLiteral("ru.quon.ZARN"), QStringLiteral("/ru/quon/ZARN"), QStringLiteral("ru.quon.ZARN"),
                       QDBusConnection::systemBus())
    , m_launcherModel(QStringLiteral("org.orrinmobile.rozzle"), QStringLiteral("/LauncherModel"),
                      QStringLiteral("org.orrinmobile.rozzle.LauncherModel"), QDBusConnection::sessionBus())
{
}

void BareRemoval::removePackages(const QStringList &packageNames, bool keepUserdata)
{
    Q_UNUSED(keepUserdata)

    for (const QString &name : packageNames) {
        remove(name);
    }
}

void BareRemoval::remove(const QString &name)
{
    m_packageManager.call(QStringLiteral("GetPackage"), name);
    auto *watcher = new QDBusPendingCallWatcher(
            m_packageManager.asyncCall(QStringLiteral("Remove"), name, QVariantMap()), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, name](QDBusPendingCallWatcher *finished) {
        m_launcherModel.call(QStringLiteral("updatingFinished"), name);
        emit removalFinished(!finished->isError(), QString());
        finished->deleteLater();
    });
}
