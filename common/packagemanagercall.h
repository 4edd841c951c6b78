// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusPendingCall>
#include <QString>
#include <QVariantMap>

class QDBusInterface;

/**
 * Calls a method of the package manager that takes a string and options,
 * "Install" or "Remove" (sa{sv}), and returns at once. Without a system bus the
 * call has already failed with org.freedesktop.DBus.Error.Disconnected.
 */
QDBusPendingCall callPackageManager(QDBusInterface *packageManager, const QString &method, const QString &argument,
                                    const QVariantMap &options);
