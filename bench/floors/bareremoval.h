// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusInterface>
#include <QObject>
#include <QStringList>

/** The floor of a removal through the package manager: the bus calls, one after the other, and their outcome. */
class BareRemoval : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.velmoraos.installationhandler")

public:
    BareRemoval();

    Q_INVOKABLE void removePackages(const QStringList &packageNames, bool keepUserdata);

Q_SIGNALS:
    void removalFinished(bool success, const QString &errorString);

protected:
    QDBusInterface m_packageManager;

private:
    void remove(const QString &name);

    QDBusInterface m_launcherModel;
};
