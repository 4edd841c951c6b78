// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "ownersearchscene.h"

void OwnerSearchScene::init()
{
    RemovalScene::init();
    m_launcher.emplace(launcher(), "[Desktop Entry]\nType=Application\n");
}

DesktopOwnerResolver *OwnerSearchScene::resolve(QObject *parent)
{
    const auto resolver = new DesktopOwnerResolver(launcher(), parent);
    connect(resolver, &DesktopOwnerResolver::ownerPackageFound, this,
            [this](const QString &package) { note(QLatin1String("owner ") + package); });
    connect(resolver, &DesktopOwnerResolver::ownerApkFound, this,
            [this](const QString &file, const QString &apk) { note(QStringLiteral("apk %1 of %2").arg(apk, file)); });
    connect(resolver, &QObject::destroyed, this, [this] { note(QStringLiteral("deleted")); });
    return resolver;
}

bool OwnerSearchScene::searches(const QString &term)
{
    return happens(m_packageKit->calls(0, QStringLiteral("SearchFiles(uint64 4, ['%1'])").arg(term)));
}
