// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusContext>
#include <QList>
#include <QMap>
#include <QObject>
#include <QVariantMap>

/** The developer-mode service: silent installation is always allowed. */
class DeveloperMode : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "ru.quon.developermode")

public:
    Q_INVOKABLE bool IsSilentInstallationEnabled();
};

/** A package, as the package manager describes it; on the bus a{ss}. */
using PackageRecord = QMap<QString, QString>;

Q_DECLARE_METATYPE(PackageRecord)

/** The package manager; it reports at once that it has installed or removed, and does nothing. */
class PackageManager : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "ru.quon.ZARN")

public:
    Q_INVOKABLE void Install(const QString &path, const QVariantMap &options);

    /** Knows all names that begin with "bench-"; every other package is a native one. */
    Q_INVOKABLE PackageRecord GetPackage(const QString &name);

    Q_INVOKABLE void Remove(const QString &name, const QVariantMap &options);

    /** Returns when each "Install" came in, in microseconds of the monotonic clock, and forgets it. */
    Q_INVOKABLE QList<qlonglong> TakeStamps();

private:
    QList<qlonglong> m_stamps;
};

/** The package manager's hooks; there for the service's proxy, and never called. */
class Hooks : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "ru.quon.ZARN.Hooks")

public:
    Q_INVOKABLE void OnRemove(const QString &package);
};

/** The home screen's launcher model, which does nothing. */
class LauncherModel : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.orrinmobile.rozzle.LauncherModel")

public:
    Q_INVOKABLE void updatingStarted(const QString &package, const QString &, const QString &, const QString &launcher);
    Q_INVOKABLE void updatingFinished(const QString &package);
};

/** MCE's requests. */
class MceRequests : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.nokia.mce.request")

public:
    Q_INVOKABLE QString get_display_status();
    Q_INVOKABLE void notification_begin_req(const QString &name, int duration, int renewal);
    Q_INVOKABLE void notification_end_req(const QString &name, int linger);

    /** Turns the display "on" or "off", and emits the signal of that. */
    Q_INVOKABLE void TurnDisplay(const QString &state);

private:
    QString m_state = QStringLiteral("on");
};
