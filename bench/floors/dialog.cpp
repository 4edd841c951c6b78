// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// The floor of request to first frame: reads the file, makes the same bus calls
// and shows a plain page, PROGRAM PAGE.

#include "dialog.h"

#include "bareread.h"
#include "floornames.h"

#include <QDBusConnection>
#include <QFile>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQuickView>

namespace {

template<typename... Arguments>
void callMce(const QString &method, Arguments... arguments)
{
    QDBusInterface(QStringLiteral("com.nokia.mce"), QStringLiteral("/com/nokia/mce/request"),
                   QStringLiteral("com.nokia.mce.request"), QDBusConnection::systemBus())
            .call(method, arguments...);
}

}

BareDialog::BareDialog(const QString &page, QQmlEngine *engine)
    : m_page(page)
    , m_engine(engine)
    , m_developerMode(QStringLiteral("ru.quon.developermode"), QStringLiteral("/"),
                      QStringLiteral("ru.quon.developermode"), QDBusConnection::systemBus())
{
    QDBusConnection::systemBus().connect(QStringLiteral("com.nokia.mce"), QStringLiteral("/com/nokia/mce/signal"),
                                         QStringLiteral("com.nokia.mce.signal"), QStringLiteral("display_status_ind"),
                                         this, SLOT(displayChanged(QString)));
}

void BareDialog::installFiles(const QStringList &files, bool sdkMode, bool keepUserdata)
{
    Q_UNUSED(sdkMode)
    Q_UNUSED(keepUserdata)

    const PackageTexts texts = bareRead(QFile::encodeName(files.constFirst()).constData());
    m_developerMode.call(QStringLiteral("IsSilentInstallationEnabled"));
    emit needConfirm();
    auto component = new QQmlComponent(m_engine, QUrl::fromLocalFile(m_page));
    m_window = qobject_cast<QQuickWindow *>(component->create());
    component->setParent(m_window);
    m_packageName = texts.name;
    m_window->setProperty("name", texts.name);
    m_window->setProperty("version", texts.version);
    m_window->setProperty("summary", texts.summary);
    callMce(QStringLiteral("notification_begin_req"), m_packageName, 30000, 30000);
    m_window->showFullScreen();
}

void BareDialog::displayChanged(const QString &state)
{
    if (m_window && state == QLatin1String("off")) {
        callMce(QStringLiteral("notification_end_req"), m_packageName, 0);
        m_window->deleteLater();
        m_window = nullptr;
        emit installFinished(false, QString());
    }
}

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QQuickView view;
    BareDialog dialog(QCoreApplication::arguments().at(1), view.engine());
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.registerObject(FloorNames::Path, &dialog, QDBusConnection::ExportAllContents);
    return bus.registerService(FloorNames::Service) ? QGuiApplication::exec() : 1;
}
