// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "journal.h"
#include "messagelog.h"
#include "packagekitpeer.h"

#include <QObject>
#include <QStringList>

#include <optional>

/** PackageKit, played by the test, and a journal of all that happens. Each test function has them anew. */
class RemovalScene : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    /**
     * Whether all that happens within 5 seconds is what is expected; forgets it. What
     * happens instead is printed.
     */
    bool happens(const QStringList &expected);

    void note(const QString &entry) { m_journal.add(entry); }

    Journal m_journal;
    std::optional<PackageKitPeer> m_packageKit;

private:
    std::optional<MessageLog> m_log;
};
