// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "bus.h"

#include "interruption.h"

#include <QEventLoop>
#include <QString>
#include <QThread>
#include <QTimer>

#include <chrono>
#include <memory>

namespace {

QString monitorName()
{
    return QStringLiteral("monitor");
}

void connectAll(bool needsMonitor)
{
    if (needsMonitor) {
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, monitorName());
    }
    QDBusConnection::sessionBus();
}

}

// QtDBus waits without limit for a bus that does not answer, so a thread of its own does this.
Bus::State Bus::connect(bool needsMonitor, int seconds, const Interruption &interruption)
{
    std::unique_ptr<QThread> thread(QThread::create([needsMonitor] { connectAll(needsMonitor); }));
    QEventLoop loop;
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    QObject::connect(&interruption, &Interruption::received, &loop, &QEventLoop::quit);
    if (seconds > 0) {
        QTimer::singleShot(std::chrono::seconds(seconds), Qt::PreciseTimer, &loop, &QEventLoop::quit);
    }
    thread->start();
    loop.exec();
    if (thread->isFinished() && interruption.signal() == 0) {
        thread->wait();
        return connection().isConnected() ? Connected : Absent;
    }
    // Nothing ends a thread that waits for the bus.
    [[maybe_unused]] const QThread *left = thread.release();
    return interruption.signal() == 0 ? Silent : Interrupted;
}

QDBusConnection Bus::connection()
{
    return QDBusConnection::sessionBus();
}

QDBusConnection Bus::monitorConnection()
{
    return QDBusConnection(monitorName());
}

bool Bus::hasAnswered(const QDBusError &error)
{
    return error.type() != QDBusError::NoReply && error.type() != QDBusError::Disconnected;
}
