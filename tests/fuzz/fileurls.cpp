// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "fuzzing.h"
#include "installationhandler.h"
#include "peerbus.h"
#include "smallrpmconfiguration.h"
#include "texts.h"

#include <QCoreApplication>
#include <QEvent>
#include <QStringList>

#include <rpm/rpmlog.h>

namespace {

int installations = 0;
int removals = 0;

InstallationHandler &handler()
{
    static auto *const handler = new InstallationHandler;
    return *handler;
}

/** Whether a caller's string may have a path, as a URL of the network has none: Known behaviour 7. */
bool mayHavePath(const QString &text)
{
    const QString trimmed = text.trimmed();
    // The paths of Qt's own resources begin with a colon.
    return trimmed.startsWith(QLatin1Char('/')) || trimmed.startsWith(QLatin1Char(':'))
            || trimmed.startsWith("file:"_s, Qt::CaseInsensitive);
}

/** Whether a caller's string is a path that the package manager has to receive as it is: Known behaviour 7, 8, 78. */
bool isPlainPath(const QString &text)
{
    return text.startsWith(QLatin1Char('/')) && !text.startsWith("//"_s) && text.trimmed() == text;
}

}

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static const QCoreApplication application(*argc, *argv);
    static const SmallRpmConfiguration configuration;
    QuietLog::install();
    rpmSetVerbosity(RPMLOG_EMERG);
    PeerBus &bus = PeerBus::instance();
    bus.answer("IsSilentInstallationEnabled"_s, argumentsOf("(true,)"));
    bus.answer("GetPackage"_s, argumentsOf("(@a{ss} {},)"));
    bus.answer("Remove"_s, argumentsOf("()"));
    bus.answer("Install"_s, argumentsOf("()"));
    bus.note("Remove"_s);
    bus.note("Install"_s);
    QObject::connect(&handler(), &InstallationHandler::installFinished, [] { ++installations; });
    QObject::connect(&handler(), &InstallationHandler::removalFinished, [] { ++removals; });
    return 0;
}

/**
 * The strings of an installation in sdk mode, a line each. The package manager receives a path for each of them, after
 * a removal for each of them.
 */
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QString input = QString::fromUtf8(bytes(data, size));
    input.remove(QChar::Null); // No string on the bus has one.
    const QStringList urls = input.split(QLatin1Char('\n'));

    installations = removals = 0;
    handler().installFiles(urls, true);
    while (installations < 1 || removals < urls.size()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    require(PeerBus::instance().takeCalls("Remove"_s).size() == urls.size());
    const QStringList paths = PeerBus::instance().takeCalls("Install"_s);
    require(paths.size() == urls.size());
    for (int i = 0; i < urls.size(); ++i) {
        require(!isPlainPath(urls[i]) || paths[i] == urls[i]);
        require(mayHavePath(urls[i]) || paths[i].isEmpty());
    }
    return 0;
}
