// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "journal.h"
#include "recordingpeer.h"
#include "rpmenvironment.h"
#include "testdialog.h"
#include "texts.h"
#include "waitfor.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QEvent>
#include <QObject>
#include <QQmlEngine>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

/**
 * The surroundings of an installation: one peer that is the package manager, the developer mode and MCE, and answers
 * all calls with success; a dialog that the test answers; and a journal of all that happens. Tests derive from it and
 * call setUp() and tearDown() in their init() and cleanup().
 */
class InstallationFixture : public QObject
{
    Q_OBJECT

protected:
    void setUp()
    {
        m_dialog.emplace();
        startPeer();
        QCoreApplication::instance()->installEventFilter(this);
        m_journal.clear();
        m_log.emplace(&m_journal);
    }

    void tearDown()
    {
        QCoreApplication::instance()->removeEventFilter(this);
        m_log.reset();
        TestDialog::deleteScheduled();
        TestDialog::deleteAll();
        m_ownEngines.clear();
        m_peer.reset();
        m_dialog.reset();
    }

    /** The engine of all tests of the class. It loads the dialog's file only once. */
    QQmlEngine *engine()
    {
        if (!m_engine) {
            m_engine = std::make_unique<QQmlEngine>();
        }
        return m_engine.get();
    }

    /** An engine of this test's own, for tests with other dialogs or none. */
    QQmlEngine *makeEngine()
    {
        m_ownEngines.push_back(std::make_unique<QQmlEngine>());
        return m_ownEngines.back().get();
    }

    /** Replaces the peer by a new one that answers with success. */
    void startPeer()
    {
        m_peer.reset();
        m_peer = std::make_unique<RecordingPeer>(
                qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS"),
                QStringList{"ru.quon.developermode"_s, "ru.quon.ZARN"_s, "com.nokia.mce"_s}, &m_journal);
        // The calls of QMceDisplay are not tested here.
        m_peer->overlook("get_display_status"_s);
        m_peer->answer("get_display_status"_s, PeerAnswer::values("('on',)"));
        m_peer->answer("notification_begin_req"_s, PeerAnswer::values());
        m_peer->answer("notification_end_req"_s, PeerAnswer::values());
        m_peer->answer("IsSilentInstallationEnabled"_s, PeerAnswer::values("(true,)"));
        m_peer->answer("Install"_s, PeerAnswer::values());
    }

    /** Waits until all messages that have been sent up to now have arrived. False when the peer has gone. */
    static bool settle() { return roundTrip(QDBusConnection::systemBus(), "ru.quon.ZARN"_s); }

    /** Waits for this many journal entries and until all messages have arrived. */
    QStringList settledEntries(int count)
    {
        waitFor([&] { return entries().size() >= count; }, "the entries of the journal");
        settle();
        return entries();
    }

    void note(const QString &entry) { m_journal.add(entry); }
    QStringList entries() const { return m_journal.entries(); }

    /** Journal entries. */
    static QString beginRequest(const QString &name)
    {
        return "com.nokia.mce /com/nokia/mce/request "
               "com.nokia.mce.request.notification_begin_req('%1', 30000, 30000)"_s.arg(name);
    }

    static QString endRequest(const QString &name, int linger)
    {
        return "com.nokia.mce /com/nokia/mce/request com.nokia.mce.request.notification_end_req('%1', %2)"_s.arg(name)
                .arg(linger);
    }

    static QString silenceQuery()
    {
        return "ru.quon.developermode / ru.quon.developermode.IsSilentInstallationEnabled()"_s;
    }

    static QString installCall(const QString &path)
    {
        return "ru.quon.ZARN /ru/quon/ZARN ru.quon.ZARN.Install('%1', @a{sv} {})"_s.arg(path);
    }

    static QString readLine(const QString &name)
    {
        return name == "plain"_s ? R"(debug: RPM Package info: "plain" "1.2.3" "A plain package")"_s
                                 : R"(debug: RPM Package info: "translated" "1.0" "Says hello")"_s;
    }

    static QString confirmWarning(const QString &reason)
    {
        return R"(warning: "Unable install package without confirm: %1")"_s.arg(reason);
    }

    /** All entries from taking a file, outside of sdk mode, to the user's answer. */
    static QStringList asking(const QString &name)
    {
        return {
                readLine(name),  silenceQuery(),     confirmWarning("The installation is not running in sdk mode. "_s),
                "needConfirm"_s, beginRequest(name), "dialog shown full screen"_s,
        };
    }

    /** Notes "dialog shown full screen" and "dialog destroyed". */
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && watched->objectName() == "dialog"_s) {
            const auto window = qobject_cast<QWindow *>(watched);
            note(window->visibility() == QWindow::FullScreen ? "dialog shown full screen"_s : "dialog shown"_s);
            connect(window, &QObject::destroyed, this, [this] { note("dialog destroyed"_s); });
        }
        return QObject::eventFilter(watched, event);
    }

    Journal m_journal;
    std::optional<TestDialog> m_dialog;
    std::unique_ptr<RecordingPeer> m_peer;

private:
    std::optional<MessageLog> m_log;
    std::unique_ptr<QQmlEngine> m_engine;
    std::vector<std::unique_ptr<QQmlEngine>> m_ownEngines;
};
