// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "installationscene.h"

#include "roundtrip.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDebug>
#include <QEvent>
#include <QQmlEngine>
#include <QTest>

namespace {

const QString DeveloperMode = QStringLiteral("ru.quon.developermode");
const QString PackageManager = QStringLiteral("ru.quon.ZARN");
const QString Mce = QStringLiteral("com.nokia.mce");

}

InstallationScene::InstallationScene() = default;

InstallationScene::~InstallationScene() = default;

void InstallationScene::setUp()
{
    m_dialog.emplace();
    startPeer();
    QCoreApplication::instance()->installEventFilter(this);
    m_journal.clear();
    m_log.emplace(&m_journal);
}

void InstallationScene::tearDown()
{
    QCoreApplication::instance()->removeEventFilter(this);
    m_log.reset();
    TestDialog::deleteScheduled();
    TestDialog::deleteAll();
    m_ownEngines.clear();
    m_peer.reset();
    m_dialog.reset();
}

QQmlEngine *InstallationScene::engine()
{
    if (!m_engine) {
        m_engine = std::make_unique<QQmlEngine>();
    }
    return m_engine.get();
}

QQmlEngine *InstallationScene::makeEngine()
{
    m_ownEngines.push_back(std::make_unique<QQmlEngine>());
    return m_ownEngines.back().get();
}

void InstallationScene::startPeer()
{
    m_peer.reset();
    m_peer = std::make_unique<RecordingPeer>(qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"),
                                             QStringList{DeveloperMode, PackageManager, Mce}, &m_journal);
    // What QMceDisplay asks is its own matter.
    m_peer->overlook(QStringLiteral("get_display_status"));
    m_peer->answer(QStringLiteral("get_display_status"), PeerAnswer::values("('on',)"));
    m_peer->answer(QStringLiteral("notification_begin_req"), PeerAnswer::values());
    m_peer->answer(QStringLiteral("notification_end_req"), PeerAnswer::values());
    m_peer->answer(QStringLiteral("IsSilentInstallationEnabled"), PeerAnswer::values("(true,)"));
    m_peer->answer(QStringLiteral("Install"), PeerAnswer::values());
}

bool InstallationScene::settle()
{
    return roundTrip(QDBusConnection::systemBus(), PackageManager);
}

QStringList InstallationScene::settledEntries(int count)
{
    if (!QTest::qWaitFor([&] { return entries().size() >= count; })) {
        qCritical("Waited in vain for %d entries of the journal", count);
    }
    settle();
    return entries();
}

QString InstallationScene::packageFile(const QString &name)
{
    return QStringLiteral(PACKAGE_FILES "/%1.rpm").arg(name);
}

QString InstallationScene::beginRequest(const QString &name)
{
    return QStringLiteral("com.nokia.mce /com/nokia/mce/request "
                          "com.nokia.mce.request.notification_begin_req('%1', 30000, 30000)")
            .arg(name);
}

QString InstallationScene::endRequest(const QString &name, int linger)
{
    return QStringLiteral("com.nokia.mce /com/nokia/mce/request "
                          "com.nokia.mce.request.notification_end_req('%1', %2)")
            .arg(name)
            .arg(linger);
}

QString InstallationScene::silenceQuery()
{
    return QStringLiteral("ru.quon.developermode / ru.quon.developermode.IsSilentInstallationEnabled()");
}

QString InstallationScene::installCall(const QString &path)
{
    return QStringLiteral("ru.quon.ZARN /ru/quon/ZARN ru.quon.ZARN.Install('%1', @a{sv} {})").arg(path);
}

QString InstallationScene::readLine(const QString &name)
{
    return name == QLatin1String("plain")
            ? QStringLiteral(R"(debug: RPM Package info: "plain" "1.2.3" "A plain package")")
            : QStringLiteral(R"(debug: RPM Package info: "translated" "1.0" "Says hello")");
}

QString InstallationScene::confirmWarning(const QString &reason)
{
    return QStringLiteral(R"(warning: "Unable install package without confirm: %1")").arg(reason);
}

QStringList InstallationScene::asking(const QString &name)
{
    return {
            readLine(name),
            silenceQuery(),
            confirmWarning(QStringLiteral("The installation is not running in sdk mode. ")),
            QStringLiteral("needConfirm"),
            beginRequest(name),
            QStringLiteral("dialog shown full screen"),
    };
}

bool InstallationScene::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && watched->objectName() == QLatin1String("dialog")) {
        const auto window = qobject_cast<QWindow *>(watched);
        note(window->visibility() == QWindow::FullScreen ? QStringLiteral("dialog shown full screen")
                                                         : QStringLiteral("dialog shown"));
        connect(window, &QObject::destroyed, this, [this] { note(QStringLiteral("dialog destroyed")); });
    }
    return QObject::eventFilter(watched, event);
}
