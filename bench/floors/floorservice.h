// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <PackageKit/Transaction>

#include <QDBusInterface>
#include <QObject>
#include <QQmlEngine>
#include <QStringList>

class QQuickWindow;

/**
 * The service's installFiles and removePackages, one request at a time: the same calls on the buses, of librpm and of
 * PackageKit's library, and nothing else.
 */
class FloorService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.velmoraos.installationhandler")

public:
    /** page: the QML file of the dialog; engine: borrowed. */
    FloorService(const QString &page, QQmlEngine *engine);

    /** sdkMode: installs silently, otherwise shows the dialog of the first file until the display is off. */
    Q_INVOKABLE void installFiles(const QStringList &files, bool sdkMode, bool keepUserdata);

    Q_INVOKABLE void removePackages(const QStringList &packageNames, bool keepUserdata);

signals:
    void installFinished(bool success, const QString &errorString);
    void needConfirm();
    void removalFinished(bool success, const QString &errorString);

private slots:
    void displayChanged(const QString &state);

private:
    void installNext();
    void showDialog(const QString &file);

    void removeManaged(const QString &name);
    void removeNative(const QString &name);
    void removeResolved();
    void reportRemoval(const QString &name, const QString &errorString);

    QString m_page;
    QQmlEngine *m_engine;
    QDBusInterface m_launcherModel;
    QDBusInterface m_developerMode;
    QDBusInterface m_packageManager;

    QStringList m_files;
    QQuickWindow *m_window = nullptr;
    QString m_shownPackage;
    QString m_nativePackage;
    QStringList m_packageIds;
};
