// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "bus.h"

#include <QString>

#include <chrono>
#include <future>
#include <thread>

namespace {

QString monitorName()
{
    return QStringLiteral("monitor");
}

bool connectAll(bool needsMonitor)
{
    if (needsMonitor) {
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, monitorName());
    }
    return QDBusConnection::sessionBus().isConnected();
}

}

// QtDBus waits without limit for a bus that does not answer, so a thread of its own does this.
Bus::State Bus::connect(bool needsMonitor, int seconds)
{
    std::packaged_task<bool()> task([needsMonitor] { return connectAll(needsMonitor); });
    std::future<bool> isConnected = task.get_future();
    std::thread(std::move(task)).detach();
    if (seconds > 0 && isConnected.wait_for(std::chrono::seconds(seconds)) != std::future_status::ready) {
        return Silent;
    }
    return isConnected.get() ? Connected : Absent;
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
