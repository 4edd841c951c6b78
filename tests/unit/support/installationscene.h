// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "journal.h"
#include "messagelog.h"
#include "recordingpeer.h"
#include "testdialog.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

class QQmlEngine;

/**
 * What every test of an installation needs: one peer that is the package
 * manager, the developer mode and MCE, and answers all of them kindly; a dialog
 * that the test answers; and a journal of all that happens. Tests derive from
 * it, and call setUp() and tearDown() in their init() and cleanup().
 */
class InstallationScene : public QObject
{
    Q_OBJECT

protected:
    InstallationScene();
    ~InstallationScene() override;

    void setUp();
    void tearDown();

    /** The engine of all tests of the class. It loads the dialog's file once and for all. */
    QQmlEngine *engine();

    /** An engine of this test's own, for tests with other dialogs or none. */
    QQmlEngine *makeEngine();

    /** Ends what the peer was, if need be, and lets a new one answer kindly. */
    void startPeer();

    /** What everybody has sent up to now has arrived. False when the peer has gone. */
    static bool settle();

    /** The journal when it has as many entries at least, or after 5 seconds, and nothing more is under way. */
    QStringList settledEntries(int count);

    void note(const QString &entry) { m_journal.add(entry); }
    QStringList entries() const { return m_journal.entries(); }

    /** The path of a good package, "plain" or "translated". */
    static QString packageFile(const QString &name);

    /** Journal entries. */
    static QString beginRequest(const QString &name);
    static QString endRequest(const QString &name, int linger);
    static QString silenceQuery();
    static QString installCall(const QString &path);
    static QString readLine(const QString &name);
    static QString confirmWarning(const QString &reason);

    /** All that happens between taking a file, outside of sdk mode, and the user's answer. */
    static QStringList asking(const QString &name);

    /** Notes "dialog shown full screen" and "dialog destroyed". */
    bool eventFilter(QObject *watched, QEvent *event) override;

    Journal m_journal;
    std::optional<TestDialog> m_dialog;
    std::unique_ptr<RecordingPeer> m_peer;

private:
    std::optional<MessageLog> m_log;
    std::unique_ptr<QQmlEngine> m_engine;
    std::vector<std::unique_ptr<QQmlEngine>> m_ownEngines;
};
