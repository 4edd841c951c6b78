// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "transactionview.h"

#include "busnames.h"
#include "systempaths.h"
#include "rpminfo.h"

#include <QDBusConnection>
#include <QDBusInterface>
#include <QDebug>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QUrl>

#include <memory>

namespace {

// MCE keeps the display on for this long, in milliseconds.
constexpr qint32 DisplayOnDuration = 30000;
// Input prolongs that time by this long, in milliseconds.
constexpr qint32 DisplayOnRenewal = 30000;

// The display stays on for this long after the dialog has gone. MCE receives a
// thousand times the number: Known behaviour 62.
constexpr qint32 LingerConfirmed = 3000;
constexpr qint32 LingerDismissed = 1000;
constexpr qint32 LingerDisplayOff = 0;

// The answer is ignored, since the dialog works without MCE.
template<typename... Arguments>
void requestMce(const QString &method, const Arguments &...arguments)
{
    QDBusInterface mce(BusNames::Mce::Service, BusNames::Mce::Path, BusNames::Mce::Interface,
                       QDBusConnection::systemBus());
    mce.call(QDBus::Block, method, arguments...);
}

// QQmlComponent crashes when it loads a file without an engine. An empty
// component, which is never ready, takes its place then.
std::unique_ptr<QQmlComponent> createComponent(QQmlEngine *engine, const QUrl &url)
{
    return engine ? std::make_unique<QQmlComponent>(engine, url, nullptr) : std::make_unique<QQmlComponent>();
}

}

TransactionView::TransactionView(QObject *parent)
    : QObject(parent)
{
    connect(&m_display, &QMceDisplay::stateChanged, this, &TransactionView::displayStateChanged);
}

TransactionView::~TransactionView()
{
    closeWindow();
}

void TransactionView::setEngine(QQmlEngine *engine)
{
    m_engine = engine;
}

bool TransactionView::isVisible() const
{
    return m_window && m_window->isVisible();
}

bool TransactionView::hasWindow() const
{
    return m_window;
}

void TransactionView::closeWindow()
{
    if (m_window) {
        m_window->deleteLater();
        m_window = nullptr;
    }
}

void TransactionView::showConfirmation(RpmInfo *info)
{
    if (m_engine) {
        m_engine->rootContext()->setContextProperty(QStringLiteral("rpmInfo"), info);
    }
    m_notificationName = info->name();
    showDialog(QStringLiteral("SideloadDialog.qml"));
}

void TransactionView::showDialog(const QString &qmlFile)
{
    emit needConfirm();

    const QUrl url = QUrl::fromLocalFile(SystemPaths::Dialogs + QLatin1Char('/') + qmlFile);
    auto component = createComponent(m_engine, url);
    if (component->status() != QQmlComponent::Ready) {
        qWarning() << "Problems creating dialog component" << component->errors();
        return;
    }
    m_window = qobject_cast<QQuickWindow *>(component->create());
    if (!m_window) {
        qWarning() << "Failed to cast component to window" << component->errors();
        return;
    }
    // The component lives as long as its window.
    component.release()->setParent(m_window);

    // A signal that QML declares has no pointer to a member.
    connect(m_window, SIGNAL(requestInstall()), this, SLOT(handleInstallationConfirmed()));
    connect(m_window, SIGNAL(dismissed()), this, SLOT(handleDialogDismissed()));
    beginDisplayNotification();
    m_window->showFullScreen();
}

void TransactionView::beginDisplayNotification()
{
    requestMce(QStringLiteral("notification_begin_req"), m_notificationName, DisplayOnDuration, DisplayOnRenewal);
}

void TransactionView::endDisplayNotification(qint32 linger)
{
    requestMce(QStringLiteral("notification_end_req"), m_notificationName, linger * 1000);
}

void TransactionView::handleInstallationConfirmed()
{
    emit installationConfirmed();
    endDisplayNotification(LingerConfirmed);
    closeWindow();
}

void TransactionView::handleDialogDismissed()
{
    cancel(LingerDismissed);
}

void TransactionView::displayStateChanged()
{
    if (m_window && m_display.state() == QMceDisplay::DisplayOff) {
        cancel(LingerDisplayOff);
    }
}

// The window goes before the signal, since a receiver may show the dialog of the
// next file.
void TransactionView::cancel(qint32 linger)
{
    endDisplayNotification(linger);
    closeWindow();
    emit installationCancelled();
}
