// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "journal.h"
#include "packagekitpeer.h"
#include "texts.h"
#include "waitfor.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>
#include <QObject>
#include <QStringList>

#include <algorithm>
#include <initializer_list>
#include <optional>

/** One entry of the journal, or several that follow each other. */
struct Entries : QStringList
{
    Entries(const QString &entry)
        : QStringList(entry)
    {
    }
    Entries(const QList<QString> &entries)
        : QStringList(entries)
    {
    }
    Entries(std::initializer_list<Entries> parts)
    {
        for (const Entries &part : parts) {
            append(part);
        }
    }
};

/** A scripted PackageKit and a journal of all that happens, new for each test function. */
class RemovalFixture : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void init()
    {
        m_packageKit.emplace(&m_journal);
        QVERIFY(PackageKitPeer::settle());
        m_journal.clear();
        m_log.emplace(&m_journal);
    }

    void cleanup()
    {
        m_log.reset();
        m_packageKit.reset();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

protected:
    /**
     * Waits for these entries of the journal and forgets them. Prints the entries when others come. The order of the
     * entries of `anywhere` among them is open.
     */
    bool happens(const Entries &expected, const Entries &anywhere = {})
    {
        const int count = expected.size() + anywhere.size();
        const bool enough = QTest::qWaitFor([&] { return m_journal.entries().size() >= count; }, WaitLimit);
        // Entries that nobody expects have arrived after this, too. A daemon that has gone sends nothing more.
        PackageKitPeer::settle();
        QStringList entries = m_journal.entries();
        m_journal.clear();
        const bool complete = std::all_of(anywhere.cbegin(), anywhere.cend(),
                                          [&](const QString &entry) { return entries.removeOne(entry); });
        if (!enough || !complete || entries != expected) {
            qInfo().noquote() << "Expected:\n  " << expected.join("\n   "_s) << "\nand anywhere among them:\n  "
                              << anywhere.join("\n   "_s) << "\nbut this happened, besides the latter:\n  "
                              << entries.join("\n   "_s);
            return false;
        }
        return true;
    }

    /** Waits for an entry of the journal. */
    bool waitForEntry(const QString &entry)
    {
        return waitFor([&] { return m_journal.entries().contains(entry); }, qPrintable(entry));
    }

    void note(const QString &entry) { m_journal.add(entry); }

    Journal m_journal;
    std::optional<PackageKitPeer> m_packageKit;

private:
    std::optional<MessageLog> m_log;
};
