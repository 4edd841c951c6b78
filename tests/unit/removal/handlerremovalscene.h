// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "removalscene.h"

#include "handlerinternals.h"
#include "installationhandler.h"

#include <memory>

/**
 * The handler between all who take part in a removal: PackageKit, a peer on the
 * system bus that is the package manager, and one on the session bus that is the
 * home screen. The handler's signals are in the journal.
 */
class HandlerRemovalScene : public RemovalScene
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    /** Operations in flight. */
    int count() const { return HandlerInternals::count(m_handler.get()); }

    /** Journal entries. */
    static QString packageQuery(const QString &name);
    static QString removalCall(const QString &name, const QString &options = QStringLiteral("@a{sv} {}"));
    static QString updatingStarted(const QString &name, const QString &launcher);
    static QString updatingFinished(const QString &name);
    static QString finished(bool success, const QString &errorString, int count);

    std::unique_ptr<RecordingPeer> m_packageManager;
    std::unique_ptr<RecordingPeer> m_homeScreen;
    std::unique_ptr<InstallationHandler> m_handler;
};
