// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "mdeclarativecache.h"

#include <QGuiApplication>
#include <QQuickView>

QGuiApplication *MDeclarativeCache::qApplication(int &argc, char **argv)
{
    qInfo("platform: qApplication");
    return new QGuiApplication(argc, argv);
}

QQuickView *MDeclarativeCache::qQuickView()
{
    qInfo("platform: qQuickView");
    return new QQuickView;
}
