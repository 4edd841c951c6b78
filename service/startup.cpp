// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "startup.h"

#include "busnames.h"
#include "installationhandler.h"
#include "systempaths.h"

#include <mdeclarativecache.h>

#include <QDBusConnection>
#include <QDebug>
#include <QGuiApplication>
#include <QLocale>
#include <QQuickView>
#include <QTranslator>

#include <memory>

namespace {

// A missing catalogue is no error: another one has the text, or the identifier is shown.
std::unique_ptr<QTranslator> installCatalogue(const QString &name)
{
    auto translator = std::make_unique<QTranslator>();
    translator->load(name, SystemPaths::Translations);
    QCoreApplication::installTranslator(translator.get());
    return translator;
}

std::unique_ptr<QTranslator> installLocaleCatalogue(const QString &name)
{
    auto translator = std::make_unique<QTranslator>();
    translator->load(QLocale(), name, QStringLiteral("-"), SystemPaths::Translations);
    QCoreApplication::installTranslator(translator.get());
    return translator;
}

// The object comes first, so that a client that sees the name can call it.
bool publish(InstallationHandler *handler)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        qWarning() << "Could not connect to session bus.";
        return false;
    }
    if (!bus.registerObject(BusNames::InstallationHandler::Path, handler, QDBusConnection::ExportAllContents)) {
        qWarning() << "Could not register installation handler object";
        return false;
    }
    if (!bus.registerService(BusNames::InstallationHandler::Service)) {
        // The name is part of the fixed text, so it has no quotes.
        qWarning() << "Service name is already in use:" << qPrintable(BusNames::InstallationHandler::Service);
        return false;
    }
    return true;
}

}

int runService(int &argc, char **argv)
{
    const std::unique_ptr<QGuiApplication> application(MDeclarativeCache::qApplication(argc, argv));
    const std::unique_ptr<QQuickView> view(MDeclarativeCache::qQuickView());

    // Closing the dialog must not end the service; only the idle timer does.
    QGuiApplication::setQuitOnLastWindowClosed(false);

    // Qt asks the translator that was installed last first. So the locale's texts
    // come before the engineering English, and the package manager's before ours.
    const auto engineeringEnglish = installCatalogue(QStringLiteral("velmora-installationhandler_eng_en"));
    const auto locale = installLocaleCatalogue(QStringLiteral("velmora-installationhandler"));
    const auto zarnEngineeringEnglish = installCatalogue(QStringLiteral("zarn_eng_en"));
    const auto zarnLocale = installLocaleCatalogue(QStringLiteral("zarn"));

    InstallationHandler handler;
    handler.setEngine(view->engine());

    return publish(&handler) ? QGuiApplication::exec() : 1;
}
