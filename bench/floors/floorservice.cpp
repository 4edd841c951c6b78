// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "floorservice.h"

#include "barerpm.h"

#include <PackageKit/Daemon>

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QFile>
#include <QQmlComponent>
#include <QQuickWindow>

using PackageKit::Daemon;
using PackageKit::Transaction;

namespace {

BareRpm::Texts read(const QString &file)
{
    return BareRpm::read(QFile::encodeName(file).constData());
}

template<typename... Arguments>
void callMce(const QString &method, Arguments... arguments)
{
    QDBusInterface(QStringLiteral("com.nokia.mce"), QStringLiteral("/com/nokia/mce/request"),
                   QStringLiteral("com.nokia.mce.request"), QDBusConnection::systemBus())
            .call(method, arguments...);
}

}

FloorService::FloorService(const QString &page, QQmlEngine *engine)
    : m_page(page)
    , m_engine(engine)
    , m_launcherModel(QStringLiteral("org.orrinmobile.rozzle"), QStringLiteral("/LauncherModel"),
                      QStringLiteral("org.orrinmobile.rozzle.LauncherModel"), QDBusConnection::sessionBus())
    , m_developerMode(QStringLiteral("ru.quon.developermode"), QStringLiteral("/"),
                      QStringLiteral("ru.quon.developermode"), QDBusConnection::systemBus())
    , m_packageManager(QStringLiteral("ru.quon.ZARN"), QStringLiteral("/ru/quon/ZARN"), QStringLiteral("ru.quon.ZARN"),
                       QDBusConnection::systemBus())
{
    QDBusConnection::systemBus().connect(QStringLiteral("com.nokia.mce"), QStringLiteral("/com/nokia/mce/signal"),
                                         QStringLiteral("com.nokia.mce.signal"), QStringLiteral("display_status_ind"),
                                         this, SLOT(displayChanged(QString)));
}

void FloorService::installFiles(const QStringList &files, bool sdkMode, bool keepUserdata)
{
    if (!sdkMode) {
        showDialog(files.constFirst());
        return;
    }
    for (const QString &file : files) {
        removePackages({read(file).name}, keepUserdata);
    }
    m_files = files;
    installNext();
}

void FloorService::installNext()
{
    if (m_files.isEmpty()) {
        emit installFinished(true, QString());
        return;
    }
    const QString file = m_files.takeFirst();
    read(file);
    m_developerMode.call(QStringLiteral("IsSilentInstallationEnabled"));
    auto *watcher = new QDBusPendingCallWatcher(
            m_packageManager.asyncCall(QStringLiteral("Install"), file, QVariantMap()), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, &FloorService::installNext);
    connect(watcher, &QDBusPendingCallWatcher::finished, watcher, &QObject::deleteLater);
}

void FloorService::showDialog(const QString &file)
{
    const BareRpm::Texts texts = read(file);
    m_developerMode.call(QStringLiteral("IsSilentInstallationEnabled"));
    emit needConfirm();
    auto *component = new QQmlComponent(m_engine, QUrl::fromLocalFile(m_page));
    m_window = qobject_cast<QQuickWindow *>(component->create());
    component->setParent(m_window);
    m_shownPackage = texts.name;
    m_window->setProperty("name", texts.name);
    m_window->setProperty("version", texts.version);
    m_window->setProperty("summary", texts.summary);
    callMce(QStringLiteral("notification_begin_req"), m_shownPackage, 30000, 30000);
    m_window->showFullScreen();
}

void FloorService::displayChanged(const QString &state)
{
    if (m_window && state == QLatin1String("off")) {
        callMce(QStringLiteral("notification_end_req"), m_shownPackage, 0);
        m_window->deleteLater();
        m_window = nullptr;
        emit installFinished(false, QString());
    }
}

void FloorService::removePackages(const QStringList &packageNames, bool keepUserdata)
{
    Q_UNUSED(keepUserdata)

    for (const QString &name : packageNames) {
        if (m_packageManager.call(QStringLiteral("GetPackage"), name).type() == QDBusMessage::ReplyMessage) {
            removeManaged(name);
        } else {
            removeNative(name);
        }
    }
}

void FloorService::removeManaged(const QString &name)
{
    auto *watcher = new QDBusPendingCallWatcher(
            m_packageManager.asyncCall(QStringLiteral("Remove"), name, QVariantMap()), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, name](QDBusPendingCallWatcher *finished) {
        reportRemoval(name, finished->isError() ? finished->error().message() : QString());
        finished->deleteLater();
    });
}

void FloorService::removeNative(const QString &name)
{
    const QStringList launchers = BareRpm::findLaunchers(name.toLocal8Bit().constData());
    for (const QString &launcher : launchers) {
        m_launcherModel.call(QStringLiteral("updatingStarted"), name, QString(), QString(), launcher);
    }
    m_nativePackage = name;
    m_packageIds.clear();
    const Transaction *resolve = Daemon::resolve(name, Transaction::FilterInstalled);
    connect(resolve, &Transaction::finished, this, &FloorService::removeResolved);
    connect(resolve, &Transaction::errorCode, this,
            [this](Transaction::Error, const QString &details) { reportRemoval(m_nativePackage, details); });
    connect(resolve, &Transaction::package, this,
            [this](Transaction::Info, const QString &id, const QString &) { m_packageIds.append(id); });
}

void FloorService::removeResolved()
{
    const Transaction *removal =
            Daemon::removePackages(m_packageIds, false, false, Transaction::TransactionFlagOnlyTrusted);
    connect(removal, &Transaction::finished, this, [this] { reportRemoval(m_nativePackage, QString()); });
    connect(removal, &Transaction::errorCode, this,
            [this](Transaction::Error, const QString &details) { reportRemoval(m_nativePackage, details); });
    // The service listens to the progress too, and the library asks the bus for each signal that has a listener.
    connect(removal, &Transaction::itemProgress, this, [] {});
}

void FloorService::reportRemoval(const QString &name, const QString &errorString)
{
    m_launcherModel.call(QStringLiteral("updatingFinished"), name);
    emit removalFinished(errorString.isEmpty(), errorString);
}
