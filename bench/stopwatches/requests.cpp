// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Wall time from the call to the signal that ends it, in microseconds, of services that run already:
// PROGRAM install ROUNDS FOLDER SERVICE...: silent installations of all files of the folder in one transaction
// PROGRAM remove ROUNDS PACKAGE SERVICE...: removals

#include "requests.h"

#include "stopwatch.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>

#include <memory>

namespace {

const QString Path = QStringLiteral("/org/velmoraos/installationhandler");
const QString Interface = QStringLiteral("org.velmoraos.installationhandler");

}

Requests::Requests(const QString &service, const QString &method, const QVariantList &arguments, const QString &outcome)
    : m_service(service)
    , m_method(method)
    , m_arguments(arguments)
{
    QDBusConnection::sessionBus().connect(m_service, Path, Interface, outcome, this, SLOT(finished(bool,QString)));
}

double Requests::send()
{
    m_finishedAt = 0;
    QDBusMessage call = QDBusMessage::createMethodCall(m_service, Path, Interface, m_method);
    call.setArguments(m_arguments);
    const double sent = now();
    QDBusConnection::sessionBus().send(call);
    waitUntil([this] { return m_finishedAt > 0; }, m_method + QStringLiteral(" of ") + m_service);
    return m_finishedAt - sent;
}

void Requests::finished(bool success, const QString &errorString)
{
    m_finishedAt = now();
    if (!success) {
        fail(m_service + QStringLiteral(": ") + errorString);
    }
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 5) {
        fail(QStringLiteral("install ROUNDS FOLDER SERVICE... | remove ROUNDS PACKAGE SERVICE..."));
    }
    const bool install = arguments.at(1) == QLatin1String("install");
    QStringList subjects{arguments.at(3)};
    if (install) {
        const QDir folder(arguments.at(3));
        subjects = folder.entryList(QDir::Files, QDir::Name);
        std::transform(subjects.cbegin(), subjects.cend(), subjects.begin(),
                       [&](const QString &file) { return folder.absoluteFilePath(file); });
    }

    std::vector<std::unique_ptr<Requests>> services;
    std::vector<std::function<double()>> functions;
    for (const QString &service : arguments.mid(4)) {
        services.push_back(install ? std::make_unique<Requests>(service, QStringLiteral("installFiles"),
                                                                QVariantList{subjects, true, false},
                                                                QStringLiteral("installFinished"))
                                   : std::make_unique<Requests>(service, QStringLiteral("removePackages"),
                                                                QVariantList{subjects, false},
                                                                QStringLiteral("removalFinished")));
        functions.emplace_back([requests = services.back().get()] { return requests->send(); });
    }
    measureInTurn(arguments.at(2).toInt(), functions);
    return 0;
}
