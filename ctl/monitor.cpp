// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "monitor.h"

#include "bus.h"
#include "jsonline.h"
#include "print.h"
#include "results.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTime>

namespace {

// As in a program: name(value,value).
QString toText(const QString &name, const QJsonArray &values)
{
    const QString list = QString::fromUtf8(QJsonDocument(values).toJson(QJsonDocument::Compact));
    return QStringLiteral("%1(%2)").arg(name, list.mid(1, list.size() - 2));
}

// The values by their names, or all in one list if they are not those of the bus interface.
QJsonObject readSignal(const QDBusMessage &signal, const QJsonArray &values)
{
    const bool isQuestion = signal.member() == QLatin1String("needConfirm");
    if (isQuestion && values.isEmpty()) {
        return {};
    }
    if (!isQuestion && signal.signature() == QLatin1String("bs")) {
        return {{QStringLiteral("success"), values.at(0)}, {QStringLiteral("text"), values.at(1)}};
    }
    return {{QStringLiteral("arguments"), values}};
}

}

Monitor::Monitor(const CommandLine &commandLine, QElapsedTimer clock)
    : m_commandLine(commandLine)
    , m_service(Bus::connection())
    , m_callMonitor(Bus::monitorConnection())
    , m_clock(clock)
{
    m_timeout.setSingleShot(true);
    m_timeout.setTimerType(Qt::PreciseTimer);
    connect(&m_timeout, &QTimer::timeout, this, &Monitor::handleTimeout);
    connect(&m_service, &Service::listening, this, &Monitor::handlePrepared);
    connect(&m_callMonitor, &CallMonitor::started, this, &Monitor::handlePrepared);
    connect(&m_service, &Service::busLost, this, [this] { fail(Results::busGone()); });
}

void Monitor::start()
{
    if (m_commandLine.limit() > 0) {
        m_timeout.start(m_commandLine.timeLeft(m_clock));
    }
    m_service.listen();
    m_callMonitor.start();
}

// The first line tells that everything is seen from now on.
void Monitor::handlePrepared()
{
    --m_preparations;
    if (m_preparations > 0) {
        return;
    }
    if (m_commandLine.seconds < 0) {
        m_timeout.stop();
    }
    showRunning(m_service.mayRun());
    connect(&m_service, &Service::ownerChanged, this,
            [this](const QString &, const QString &owner) { showRunning(!owner.isEmpty()); });
    connect(&m_service, &Service::received, this, &Monitor::showSignal);
    connect(&m_callMonitor, &CallMonitor::called, this, &Monitor::showCall);
}

void Monitor::handleTimeout()
{
    if (m_preparations > 0) {
        fail(Results::silentBus(m_commandLine.limit()));
    } else {
        emit finished(exitStatus(Outcome::Done));
    }
}

void Monitor::fail(const Result &result)
{
    printError(result.text);
    emit finished(exitStatus(result.outcome));
}

void Monitor::showCall(const QDBusMessage &call) const
{
    const QJsonArray arguments = QJsonArray::fromVariantList(call.arguments());
    show(QLatin1String("request"),
         {{QStringLiteral("name"), call.member()},
          {QStringLiteral("arguments"), arguments},
          {QStringLiteral("sender"), call.service()}},
         call.service() + QLatin1Char(' ') + toText(call.member(), arguments));
}

void Monitor::showRunning(bool isRunning) const
{
    //: The service is on the bus
    //% "the service runs"
    const QString runs = qtTrId("installctl-service-runs");
    //: The service is not on the bus
    //% "the service does not run"
    const QString rests = qtTrId("installctl-service-rests");
    show(QLatin1String("service"), {{QStringLiteral("running"), isRunning}}, isRunning ? runs : rests);
}

void Monitor::showSignal(const QDBusMessage &signal) const
{
    const QJsonArray arguments = QJsonArray::fromVariantList(signal.arguments());
    QJsonObject object = readSignal(signal, arguments);
    object.insert(QStringLiteral("name"), signal.member());
    show(QLatin1String("signal"), object, toText(signal.member(), arguments));
}

void Monitor::show(QLatin1String event, const QJsonObject &object, const QString &text) const
{
    if (m_commandLine.json) {
        printJsonLine(event, object, m_clock);
    } else {
        printLine(stdout, QTime::currentTime().toString(Qt::ISODate) + QLatin1Char(' ') + printable(text));
    }
}
