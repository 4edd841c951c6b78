// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "handlerinternals.h"
#include "installationhandler.h"
#include "removalfixture.h"

#include <memory>

/**
 * The handler between all peers of a removal: PackageKit, the package manager on the system bus and the home screen on
 * the session bus. The handler's signals are in the journal.
 */
class HandlerRemovalFixture : public RemovalFixture
{
    Q_OBJECT

protected Q_SLOTS:
    void init()
    {
        m_packageManager = std::make_unique<RecordingPeer>(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"),
                                                           QStringList("ru.quon.ZARN"_s), &m_journal);
        m_packageManager->answer("GetPackage"_s, PeerAnswer::error("ru.quon.ZARN.Error.Unknown"));
        m_packageManager->answer("Remove"_s, PeerAnswer::held());
        m_homeScreen = std::make_unique<RecordingPeer>(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                                       QStringList("org.orrinmobile.rozzle"_s), &m_journal);
        m_homeScreen->answer("updatingStarted"_s, PeerAnswer::values());
        m_homeScreen->answer("updatingFinished"_s, PeerAnswer::values());

        m_handler = std::make_unique<InstallationHandler>();
        connect(m_handler.get(), &InstallationHandler::removalFinished, this,
                [this](bool success, const QString &errorString) { note(finished(success, errorString, count())); });
        RemovalFixture::init();
    }

    void cleanup()
    {
        m_handler.reset();
        RemovalFixture::cleanup();
        m_homeScreen.reset();
        m_packageManager.reset();
    }

protected:
    /** Operations in flight. */
    int count() const { return HandlerInternals::count(m_handler.get()); }

    /** Journal entries. */
    static QString packageQuery(const QString &name)
    {
        return "ru.quon.ZARN /ru/quon/ZARN ru.quon.ZARN.GetPackage('%1',)"_s.arg(name);
    }

    static QString removalCall(const QString &name, const QString &options = "@a{sv} {}"_s)
    {
        return "ru.quon.ZARN /ru/quon/ZARN ru.quon.ZARN.Remove('%1', %2)"_s.arg(name, options);
    }

    static QString updatingStarted(const QString &name, const QString &launcher)
    {
        return launcherModel() + "updatingStarted('%1', '', '', '%2')"_s.arg(name, launcher);
    }

    static QString updatingFinished(const QString &name)
    {
        return launcherModel() + "updatingFinished('%1',)"_s.arg(name);
    }

    static QString finished(bool success, const QString &errorString, int count)
    {
        return "removalFinished %1 \"%2\" with %3 in flight"_s.arg(success ? "well"_s : "badly"_s, errorString)
                .arg(count);
    }

    static QString deletion() { return "debug: deleting UninstallTransactionPkgKit"_s; }

    /** The beginning of a removal through PackageKit, which first asks what is installed. */
    QStringList nativeRemoval(const QString &name, int transaction = 0) const
    {
        return QStringList{"debug: Uninstall \"%1\" via RPM"_s.arg(name),
                           "debug: UninstallTransactionPkgKit::start: (\"%1\")"_s.arg(name)}
        + m_packageKit->calls(transaction, "Resolve(uint64 4, ['%1'])"_s.arg(name));
    }

    /** The end of a removal without an error, and of the last operation in flight. */
    static QStringList success(const QString &name)
    {
        return {"debug: Uninstalled \"%1\""_s.arg(name), updatingFinished(name), finished(true, QString(), 0)};
    }

    std::unique_ptr<RecordingPeer> m_packageManager;
    std::unique_ptr<RecordingPeer> m_homeScreen;
    std::unique_ptr<InstallationHandler> m_handler;

private:
    static QString launcherModel()
    {
        return "org.orrinmobile.rozzle /LauncherModel org.orrinmobile.rozzle.LauncherModel."_s;
    }
};
