// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// The service mode with an observer inside. Once the event loop runs, the observer prints what has been set up, a line
// for each thing, and ends the loop with the status 42. It reports other events by calls on the system bus, where their
// order among the handler's own messages shows. With the argument "occupied" the object path is taken before the
// start-up.

#include "installationhandler.h"
#include "startup.h"
#include "texts.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QEvent>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickView>
#include <QTextStream>
#include <QTimer>

#include <algorithm>

namespace {

const QString Path = "/org/velmoraos/installationhandler"_s;
const QString Name = "org.velmoraos.installationhandler"_s;

void print(const QString &what, const QString &value)
{
    QTextStream(stdout) << what << ": " << value << '\n';
}

void print(const QString &what, bool value)
{
    print(what, value ? "yes"_s : "no"_s);
}

// Returns when the call is on the bus. It has no receiver.
void report(const QString &event)
{
    QDBusMessage call =
            QDBusMessage::createMethodCall("org.velmoraos.probe"_s, "/"_s, "org.velmoraos.probe"_s, "Report"_s);
    call.setAutoStartService(false);
    call << event;
    QDBusConnection::systemBus().call(call);
}

void reportEndOf(const QObject *object, const QString &name)
{
    QObject::connect(object, &QObject::destroyed, [name] { report(name + " destroyed"_s); });
}

/** Reports the changes of the application's catalogues. */
class CatalogueObserver : public QObject
{
protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == QCoreApplication::instance() && event->type() == QEvent::LanguageChange) {
            report("text of "_s + qtTrId("probe-all"));
            observeEngine();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    // The engine exists before the first catalogue is loaded, and no signal says when it is made.
    void observeEngine()
    {
        if (!m_observesEngine) {
            const auto view = qobject_cast<QQuickView *>(QGuiApplication::allWindows().constFirst());
            reportEndOf(view->engine(), "engine"_s);
            m_observesEngine = true;
        }
    }

    bool m_observesEngine = false;
};

QString windowsOnScreen()
{
    const QWindowList windows = QGuiApplication::allWindows();
    return QString::number(
            std::count_if(windows.cbegin(), windows.cend(), [](const QWindow *window) { return window->isVisible(); }));
}

void printState()
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const auto handler = qobject_cast<InstallationHandler *>(bus.objectRegisteredAt(Path));
    print("arguments"_s, QCoreApplication::arguments().mid(1).join(" "_s));
    print("quits with its last window"_s, QGuiApplication::quitOnLastWindowClosed());
    print("windows"_s, windowsOnScreen());
    print("object on the bus"_s, handler != nullptr);
    print("name on the bus"_s, bus.interface()->serviceOwner(Name).value() == bus.baseService());
    for (const char *id : {"probe-one", "probe-two", "probe-three", "probe-four", "probe-none"}) {
        print(QString::fromLatin1(id), qtTrId(id));
    }
    if (handler) {
        handler->installFiles({"/absent.rpm"_s});
        print("windows with a dialog"_s, windowsOnScreen());
    }
    QCoreApplication::exit(42);
}

void beginToObserve()
{
    QCoreApplication *const application = QCoreApplication::instance();
    if (QCoreApplication::arguments().contains("occupied"_s)) {
        QDBusConnection::sessionBus().registerObject(Path, application);
    }
    static CatalogueObserver observer;
    application->installEventFilter(&observer);
    reportEndOf(application, "application"_s);
    QTimer::singleShot(0, printState);
}

}

Q_COREAPP_STARTUP_FUNCTION(beginToObserve)

int main(int argc, char **argv)
{
    return runService(argc, argv);
}
