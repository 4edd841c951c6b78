// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "bareremoval.h"

/** Installs files one after the other, unasked, one request at a time, and removes what they replace before. */
class BareInstallation : public BareRemoval
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.velmoraos.installationhandler")

public:
    BareInstallation();

    Q_INVOKABLE void installFiles(const QStringList &files, bool sdkMode, bool keepUserdata);

Q_SIGNALS:
    void installFinished(bool success, const QString &errorString);

private:
    void installNext();

    QDBusInterface m_developerMode;
    QStringList m_files;
};
