// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "removalscene.h"

#include "desktopownerresolver.h"
#include "devicefile.h"

#include <optional>

/** A launcher whose owner is searched for, and the search's signals in the journal. */
class OwnerSearchScene : public RemovalScene
{
    Q_OBJECT

public:
    /** Its path; tests give it the contents that they need. */
    static QString launcher() { return QStringLiteral("/usr/share/applications/app.desktop"); }

protected Q_SLOTS:
    void init();

protected:
    /** Starts a search. */
    DesktopOwnerResolver *resolve(QObject *parent = nullptr);

    /** Whether PackageKit's transaction 0 is to find the owners of this file, and nothing else has happened. */
    bool searches(const QString &term);

    std::optional<DeviceFile> m_launcher;
};
