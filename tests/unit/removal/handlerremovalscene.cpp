// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "handlerremovalscene.h"

namespace {

const QString LauncherModel = QStringLiteral("org.orrinmobile.rozzle /LauncherModel "
                                             "org.orrinmobile.rozzle.LauncherModel.");
const QString PackageManager = QStringLiteral("ru.quon.ZARN /ru/quon/ZARN ru.quon.ZARN.");

}

void HandlerRemovalScene::init()
{
    m_packageManager = std::make_unique<RecordingPeer>(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"),
                                                       QStringList(QStringLiteral("ru.quon.ZARN")), &m_journal);
    m_packageManager->answer(QStringLiteral("GetPackage"), PeerAnswer::error("ru.quon.ZARN.Error.Unknown"));
    m_packageManager->answer(QStringLiteral("Remove"), PeerAnswer::held());
    m_homeScreen = std::make_unique<RecordingPeer>(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                                   QStringList(QStringLiteral("org.orrinmobile.rozzle")), &m_journal);
    m_homeScreen->answer(QStringLiteral("updatingStarted"), PeerAnswer::values());
    m_homeScreen->answer(QStringLiteral("updatingFinished"), PeerAnswer::values());

    m_handler = std::make_unique<InstallationHandler>();
    connect(m_handler.get(), &InstallationHandler::removalFinished, this,
            [this](bool success, const QString &errorString) { note(finished(success, errorString, count())); });
    RemovalScene::init();
}

void HandlerRemovalScene::cleanup()
{
    m_handler.reset();
    RemovalScene::cleanup();
    m_homeScreen.reset();
    m_packageManager.reset();
}

QString HandlerRemovalScene::packageQuery(const QString &name)
{
    return PackageManager + QStringLiteral("GetPackage('%1',)").arg(name);
}

QString HandlerRemovalScene::removalCall(const QString &name, const QString &options)
{
    return PackageManager + QStringLiteral("Remove('%1', %2)").arg(name, options);
}

QString HandlerRemovalScene::updatingStarted(const QString &name, const QString &launcher)
{
    return LauncherModel + QStringLiteral("updatingStarted('%1', '', '', '%2')").arg(name, launcher);
}

QString HandlerRemovalScene::updatingFinished(const QString &name)
{
    return LauncherModel + QStringLiteral("updatingFinished('%1',)").arg(name);
}

QString HandlerRemovalScene::finished(bool success, const QString &errorString, int count)
{
    return QStringLiteral("removalFinished %1 \"%2\" with %3 in flight")
            .arg(success ? QStringLiteral("well") : QStringLiteral("badly"), errorString)
            .arg(count);
}
