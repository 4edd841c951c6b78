// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <PackageKit/Transaction>

#include <QObject>
#include <QString>

/**
 * Finds out who owns a launcher file: native packages, by PackageKit's file
 * search, or an Android application, by the launcher's own "X-zindro-apkfile"
 * key. Starts when it is created and deletes itself when the search has ended.
 * Finding nobody is not reported.
 */
class DesktopOwnerResolver : public QObject
{
    Q_OBJECT

public:
    /** desktopFile: the launcher's absolute path. */
    explicit DesktopOwnerResolver(const QString &desktopFile, QObject *parent = nullptr);

Q_SIGNALS:
    /** A native package owns the launcher, or the Android package that it starts; once for each such package. */
    void ownerPackageFound(const QString &package);

    /** No native package does, and the launcher starts an Android application; at most once, at the end. */
    void ownerApkFound(const QString &desktopFile, const QString &apk);

private Q_SLOTS:
    void handleFinished(PackageKit::Transaction::Exit status, uint runtime);
    void handleError(PackageKit::Transaction::Error error, const QString &details);
    void handlePackage(PackageKit::Transaction::Info info, const QString &pkgId, const QString &summary);

private:
    void handleUnreachable();

    const QString m_desktopFile;
    bool m_ownerFound = false;
};
