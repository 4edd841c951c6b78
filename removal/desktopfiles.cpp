// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopfiles.h"

#include "rpmconfiguration.h"
#include "rpmhandle.h"
#include "systempaths.h"

#include <QDir>
#include <QFileInfo>

#include <rpm/rpmdb.h>
#include <rpm/rpmfi.h>

#include <algorithm>

namespace {

const QString AndroidLauncherPrefix = QStringLiteral("zindro_launcher_");
const QString AndroidPackagePrefix = QStringLiteral("ambrel-apk-");

bool isLauncher(const QString &file)
{
    return file.startsWith(SystemPaths::Applications) && file.endsWith(QLatin1String(".desktop"));
}

QStringList findAndroidLaunchers(const QString &name)
{
    QString application = name.mid(AndroidPackagePrefix.size());
    application.replace(QLatin1Char('.'), QLatin1Char('_'));
    const QString pattern = AndroidLauncherPrefix + application + QStringLiteral("*.desktop");

    const QFileInfoList entries = QDir(SystemPaths::Applications).entryInfoList({pattern});
    QStringList files;
    std::transform(entries.cbegin(), entries.cend(), std::back_inserter(files),
                   [](const QFileInfo &entry) { return entry.filePath(); });
    return files;
}

QStringList findInstalledLaunchers(const QString &name)
{
    RpmConfiguration::loadOnce();
    const RpmHandle<rpmts> ts(rpmtsCreate());
    const QByteArray key = name.toLocal8Bit();
    const RpmHandle<rpmdbMatchIterator> packages(rpmtsInitIterator(ts.get(), RPMDBI_NAME, key.constData(), 0));
    Header package = rpmdbNextIterator(packages.get());
    if (!package) {
        return {};
    }

    QStringList files;
    const RpmHandle<rpmfi> fi(rpmfiInit(rpmfiNew(ts.get(), package, RPMTAG_BASENAMES, RPMFI_FLAGS_QUERY), 0));
    while (rpmfiNext(fi.get()) >= 0) {
        const QString file = QString::fromUtf8(rpmfiFN(fi.get()));
        if (isLauncher(file)) {
            files.append(file);
        }
    }
    return files;
}

}

QStringList findDesktopFiles(const QString &name)
{
    return name.startsWith(AndroidPackagePrefix) ? findAndroidLaunchers(name) : findInstalledLaunchers(name);
}
