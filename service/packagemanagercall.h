// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusPendingCall>
#include <QString>
#include <QVariantMap>

class QDBusInterface;

/**
 * Calls one of the package manager's methods that take a string and options,
 * "Install" or "Remove" (sa{sv}), without waiting. Without a system bus the call
 * has failed with org.freedesktop.DBus.Error.Disconnected.
 */
QDBusPendingCall callPackageManager(QDBusInterface *packageManager, const QString &method, const QString &argument,
                                    const QVariantMap &options);

/**
 * Whether the package manager knows a package of this name, asked with
 * "GetPackage" (s → a{ss}); false when it doesn't say. Waits for the answer,
 * for as long as the proxy's time-out.
 */
bool isZarnPackage(QDBusInterface *packageManager, const QString &package);
