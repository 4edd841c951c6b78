// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusArgument>
#include <QMap>
#include <QMetaType>
#include <QString>

/**
 * The package manager's record of one installed package, the answer to its
 * "GetPackage"; D-Bus signature a{ss}. The values are not used: an answer of this
 * type says that the package manager knows the package.
 */
using ZarnPackage = QMap<QString, QString>;

Q_DECLARE_METATYPE(ZarnPackage)

/** Writes the entries in key order. */
QDBusArgument &operator<<(QDBusArgument &argument, const ZarnPackage &package);

/** Replaces the record. A later entry with the same key wins, whereas QtDBus's own operator for maps keeps both. */
const QDBusArgument &operator>>(const QDBusArgument &argument, ZarnPackage &package);

/** Makes the type ZarnPackage known to QtDBus. Call it before the first "GetPackage". */
void registerZarnPackage();
