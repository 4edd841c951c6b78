// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// The service mode with somebody inside who looks around: once the event loop
// runs, prints what was set up, a line for each thing, and ends the loop with
// the status 42. What comes and goes meanwhile it tells on the system bus, where
// the order shows in which that and the handler's own messages were sent. With
// the argument "occupied" the object path is taken before.

#include "installationhandler.h"
#include "startup.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QEvent>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickView>
#include <QTextStream>
#include <QTimer>
#include <QWindow>

#include <algorithm>

namespace {

constexpr int Status = 42;

const QString Path = QStringLiteral("/org/velmoraos/installationhandler");
const QString Name = QStringLiteral("org.velmoraos.installationhandler");

void print(const QString &what, const QString &value)
{
    QTextStream(stdout) << what << ": " << value << '\n';
}

QString yesOrNo(bool yes)
{
    return yes ? QStringLiteral("yes") : QStringLiteral("no");
}

// Comes back when the message is on the bus; nobody needs to be there to receive it.
void tell(const QString &what)
{
    QDBusMessage message =
            QDBusMessage::createMethodCall(QStringLiteral("org.velmoraos.probe"), QStringLiteral("/"),
                                           QStringLiteral("org.velmoraos.probe"), QStringLiteral("Tell"));
    message.setAutoStartService(false);
    message << what;
    QDBusConnection::systemBus().call(message);
}

void tellEndOf(const QObject *object, const QString &what)
{
    QObject::connect(object, &QObject::destroyed, [what] { tell(what + QStringLiteral(" destroyed")); });
}

/** Listens in on the application, which is told of every change of its catalogues. */
class Listener : public QObject
{
protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == QCoreApplication::instance() && event->type() == QEvent::LanguageChange) {
            tell(QStringLiteral("text of ") + qtTrId("probe-all"));
            listenToEngine();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    // Nobody tells when it is made; it is there before the catalogues.
    void listenToEngine()
    {
        if (!m_listensToEngine) {
            const auto view = qobject_cast<QQuickView *>(QGuiApplication::allWindows().constFirst());
            tellEndOf(view->engine(), QStringLiteral("engine"));
            m_listensToEngine = true;
        }
    }

    bool m_listensToEngine = false;
};

bool isNameOwned(const QDBusConnection &bus)
{
    return bus.interface()->serviceOwner(Name).value() == bus.baseService();
}

int windowsOnScreen()
{
    const QWindowList windows = QGuiApplication::allWindows();
    return int(
            std::count_if(windows.cbegin(), windows.cend(), [](const QWindow *window) { return window->isVisible(); }));
}

void lookAround()
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const auto handler = qobject_cast<InstallationHandler *>(bus.objectRegisteredAt(Path));
    print(QStringLiteral("arguments"), QCoreApplication::arguments().mid(1).join(QLatin1Char(' ')));
    print(QStringLiteral("quits with its last window"), yesOrNo(QGuiApplication::quitOnLastWindowClosed()));
    print(QStringLiteral("windows"), QString::number(windowsOnScreen()));
    print(QStringLiteral("object on the bus"), yesOrNo(handler));
    print(QStringLiteral("name on the bus"), yesOrNo(isNameOwned(bus)));
    for (const char *id : {"probe-one", "probe-two", "probe-three", "probe-four", "probe-none"}) {
        print(QString::fromLatin1(id), qtTrId(id));
    }
    if (handler) {
        handler->installFiles({QStringLiteral("/absent.rpm")});
        print(QStringLiteral("windows with a dialog"), QString::number(windowsOnScreen()));
    }
    QCoreApplication::exit(Status);
}

void enter()
{
    if (QCoreApplication::arguments().contains(QStringLiteral("occupied"))) {
        QDBusConnection::sessionBus().registerObject(Path, QCoreApplication::instance());
    }
    static Listener listener;
    QCoreApplication::instance()->installEventFilter(&listener);
    tellEndOf(QCoreApplication::instance(), QStringLiteral("application"));
    QTimer::singleShot(0, lookAround);
}

}

Q_COREAPP_STARTUP_FUNCTION(enter)

int main(int argc, char **argv)
{
    return runService(argc, argv);
}
