// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "removalscene.h"

#include "uninstalltransactionpkgkit.h"

/** Removals through PackageKit, whose signals are in the journal. */
class UninstallScene : public RemovalScene
{
    Q_OBJECT

protected:
    /** A removal that has not started. */
    Package::UninstallTransactionPkgKit *make(const QStringList &names, bool autoremove = false);

    /** A removal of the package "a", PackageKit's transaction 0, which waits to hear what is installed. */
    Package::UninstallTransactionPkgKit *startResolving();

    /** A removal of the package "a" that was found installed and is being removed by PackageKit's transaction 1. */
    Package::UninstallTransactionPkgKit *startRemoving(bool autoremove = false);

    /** Journal entries. */
    static QString startLine(const QString &names = QStringLiteral("(\"a\")"));
    static QString resolvedLine(const QString &id, const QString &summary = {});
    static QString endLine(const QString &exit, uint runtime = 0);
    static QStringList failing(const QString &phase, const QString &error, const QString &details);
    static QStringList succeeding();
    static QString deletion();
};
