// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <PackageKit/Transaction>

#include <QObject>
#include <QString>

/**
 * Finds the owner of a launcher file. Native packages are found by PackageKit's
 * file search, an Android application by the key "X-zindro-apkfile" of the
 * launcher. The search starts at construction, and the object deletes itself when
 * the search has ended. No signal says that there is no owner.
 */
class DesktopOwnerResolver : public QObject
{
    Q_OBJECT

public:
    /** desktopFile: the launcher's absolute path. */
    explicit DesktopOwnerResolver(const QString &desktopFile, QObject *parent = nullptr);

Q_SIGNALS:
    /** A native package owns the launcher, or the launcher's Android package file; once for each such package. */
    void ownerPackageFound(const QString &package);

    /** No native package owns either, and the launcher has an Android package file; at most once, at the end. */
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
