// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusArgument>
#include <QMap>
#include <QMetaType>
#include <QString>

/**
 * The package manager's record of one installed package, as its "GetPackage"
 * answers it. On the bus: a{ss}. Nobody reads the values; an answer of this
 * form says that the package manager knows the package.
 */
using ZarnPackage = QMap<QString, QString>;

Q_DECLARE_METATYPE(ZarnPackage)

/** An entry for each key, in key order. */
QDBusArgument &operator<<(QDBusArgument &argument, const ZarnPackage &package);

/** A later entry with the same key replaces an earlier one; QtDBus's own operator for maps keeps both. */
const QDBusArgument &operator>>(const QDBusArgument &argument, ZarnPackage &package);

/** Makes ZarnPackage known to QtDBus; needed before the first "GetPackage". */
void registerZarnPackage();
