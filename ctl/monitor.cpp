// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "monitor.h"

#include "bus.h"
#include "jsonline.h"
#include "outcome.h"
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

}

Monitor::Monitor(Format format, QElapsedTimer clock)
    : m_service(Bus::connection())
    , m_callMonitor(Bus::monitorConnection())
    , m_format(format)
    , m_clock(clock)
{
    connect(&m_service, &Service::listening, this, [this] { showRunning(m_service.wasRunning()); });
    connect(&m_service, &Service::ownerChanged, this,
            [this](const QString &, const QString &owner) { showRunning(!owner.isEmpty()); });
    connect(&m_service, &Service::needConfirm, this, [this] {
        const QString name = QStringLiteral("needConfirm");
        show(QLatin1String("signal"), {{QStringLiteral("name"), name}}, toText(name, {}));
    });
    connect(&m_service, &Service::installFinished, this,
            [this](bool success, const QString &errorString) { showOutcome("installFinished", success, errorString); });
    connect(&m_service, &Service::removalFinished, this,
            [this](bool success, const QString &errorString) { showOutcome("removalFinished", success, errorString); });
    connect(&m_service, &Service::busLost, this, &Monitor::handleBusLost);
    connect(&m_callMonitor, &CallMonitor::called, this, &Monitor::showCall);
}

void Monitor::start()
{
    m_service.listen();
    m_callMonitor.start();
}

void Monitor::handleBusLost()
{
    printError(Results::busGone().text);
    emit finished(exitStatus(Outcome::Unavailable));
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

void Monitor::showOutcome(const char *name, bool success, const QString &errorString) const
{
    const QString signal = QLatin1String(name);
    show(QLatin1String("signal"),
         {{QStringLiteral("name"), signal},
          {QStringLiteral("success"), success},
          {QStringLiteral("text"), errorString}},
         toText(signal, {success, errorString}));
}

void Monitor::show(QLatin1String event, const QJsonObject &object, const QString &text) const
{
    if (m_format == Json) {
        printJsonLine(event, object, m_clock);
    } else {
        printLine(stdout, QTime::currentTime().toString(Qt::ISODate) + QLatin1Char(' ') + printable(text));
    }
}
