// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "removal.h"

#include <QFileSystemWatcher>
#include <QTimer>

/** The removal of the application of a launcher, which may end without a report (Known behaviour 21). */
class LauncherRemoval : public Removal
{
    Q_OBJECT

public:
    /** launcher: an absolute path. service, others: outlive this object. */
    LauncherRemoval(Service *service, const OtherRequests *others, const QString &launcher);

protected:
    void handleAnswer() override;

private:
    void handleChange();
    void giveUp();

    const QString m_launcher;
    // Users may watch the folder of a file that they may not read.
    QFileSystemWatcher m_folder;
    QTimer m_patience;
    bool m_hasGone = false;
};
