// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/** Bus names, object paths and interfaces of this service and of its peers. */
namespace BusNames {

/** This service, on the session bus. */
namespace InstallationHandler {
inline const QString Service = QStringLiteral("org.velmoraos.installationhandler");
inline const QString Path = QStringLiteral("/org/velmoraos/installationhandler");
inline const QString Interface = QStringLiteral("org.velmoraos.installationhandler");
}

/** The home screen's launcher model, on the session bus. */
namespace LauncherModel {
inline const QString Service = QStringLiteral("org.orrinmobile.rozzle");
inline const QString Path = QStringLiteral("/LauncherModel");
inline const QString Interface = QStringLiteral("org.orrinmobile.rozzle.LauncherModel");
}

/** The developer-mode service, on the system bus. */
namespace DeveloperMode {
inline const QString Service = QStringLiteral("ru.quon.developermode");
inline const QString Path = QStringLiteral("/");
inline const QString Interface = QStringLiteral("ru.quon.developermode");
}

/** The platform's package manager, on the system bus. */
namespace PackageManager {
inline const QString Service = QStringLiteral("ru.quon.ZARN");
inline const QString Path = QStringLiteral("/ru/quon/ZARN");
inline const QString Interface = QStringLiteral("ru.quon.ZARN");
}

/** The package manager's hooks in the runtime manager, on the system bus. */
namespace Hooks {
inline const QString Service = QStringLiteral("ru.quon.RuntimeManager");
inline const QString Path = QStringLiteral("/ru/quon/ZARN/Hooks");
inline const QString Interface = QStringLiteral("ru.quon.ZARN.Hooks");
}

/** The Android-support daemon, on the system bus. */
namespace Zindro {
inline const QString Service = QStringLiteral("com.zelka.zindro");
inline const QString Path = QStringLiteral("/com/zelka/zindro");
inline const QString Interface = QStringLiteral("com.zelka.zindro");
}

/** MCE's requests, on the system bus. */
namespace Mce {
inline const QString Service = QStringLiteral("com.nokia.mce");
inline const QString Path = QStringLiteral("/com/nokia/mce/request");
inline const QString Interface = QStringLiteral("com.nokia.mce.request");
}

}
