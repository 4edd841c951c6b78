// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "launcherremoval.h"

#include "results.h"

#include <QFile>
#include <QFileInfo>

#include <chrono>

using namespace std::chrono_literals;

namespace {

// PackageKit looks for the owner of the launcher, and begins to remove it.
constexpr auto SearchTime = 60s;

// The launcher of a package goes before the end of the removal is reported.
constexpr auto ReportTime = 5s;

}

LauncherRemoval::LauncherRemoval(Service *service, const OtherRequests *others, const QString &launcher)
    : Removal(service, others, QStringLiteral("removePackageByDesktopFile"), {launcher})
    , m_launcher(launcher)
    , m_folder(QStringList(QFileInfo(launcher).path()))
{
    m_patience.setSingleShot(true);
    m_patience.setTimerType(Qt::PreciseTimer);
    connect(&m_patience, &QTimer::timeout, this, &LauncherRemoval::giveUp);
    connect(&m_folder, &QFileSystemWatcher::directoryChanged, this, &LauncherRemoval::handleChange);
}

// The service deletes a launcher of the user's own before it answers, and never reports that. All other launchers go
// later.
void LauncherRemoval::handleAnswer()
{
    if (QFile::exists(m_launcher)) {
        m_patience.start(SearchTime);
    } else {
        end(Results::launcherGone());
    }
}

// The folder may change again after that.
void LauncherRemoval::handleChange()
{
    if (!m_hasGone && isAnswered() && !QFile::exists(m_launcher)) {
        m_hasGone = true;
        m_patience.start(ReportTime);
    }
}

void LauncherRemoval::giveUp()
{
    end(QFile::exists(m_launcher) ? Results::launcherThere() : Results::launcherGone());
}
