// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// The floor of start-up and of idling: the library and bus calls that no service of this kind can do without, one after
// the other. It is linked with librpm, but has no need to call it yet.

#include "floornames.h"

#include <QDBusConnection>
#include <QDBusInterface>
#include <QGuiApplication>
#include <QLocale>
#include <QQuickView>
#include <QTranslator>

int main(int argc, char **argv)
{
    const QString catalogues = QStringLiteral("/usr/share/translations");
    const QString own = QStringLiteral("velmora-installationhandler");
    const QString zarn = QStringLiteral("zarn");

    QGuiApplication application(argc, argv);
    QQuickView view;
    QTranslator translators[4];
    translators[0].load(own + QLatin1String("_eng_en"), catalogues);
    QCoreApplication::installTranslator(&translators[0]);
    translators[1].load(QLocale(), own, QStringLiteral("-"), catalogues);
    QCoreApplication::installTranslator(&translators[1]);
    translators[2].load(zarn + QLatin1String("_eng_en"), catalogues);
    QCoreApplication::installTranslator(&translators[2]);
    translators[3].load(QLocale(), zarn, QStringLiteral("-"), catalogues);
    QCoreApplication::installTranslator(&translators[3]);

    QDBusConnection session = QDBusConnection::sessionBus();
    const QDBusConnection system = QDBusConnection::systemBus();
    QDBusInterface launcherModel(QStringLiteral("org.orrinmobile.rozzle"), QStringLiteral("/LauncherModel"),
                                 QStringLiteral("org.orrinmobile.rozzle.LauncherModel"), session);
    QDBusInterface developerMode(QStringLiteral("ru.quon.developermode"), QStringLiteral("/"),
                                 QStringLiteral("ru.quon.developermode"), system);
    QDBusInterface packageManager(QStringLiteral("ru.quon.ZARN"), QStringLiteral("/ru/quon/ZARN"),
                                  QStringLiteral("ru.quon.ZARN"), system);
    QDBusInterface hooks(QStringLiteral("ru.quon.RuntimeManager"), QStringLiteral("/ru/quon/ZARN/Hooks"),
                         QStringLiteral("ru.quon.ZARN.Hooks"), system);

    QObject object;
    session.registerObject(FloorNames::Path, &object, QDBusConnection::ExportAllContents);
    return session.registerService(FloorNames::Service) ? QGuiApplication::exec() : 1;
}
