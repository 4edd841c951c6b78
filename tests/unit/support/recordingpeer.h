// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "peeranswer.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

class Journal;

/**
 * Another participant of the bus. It notes every call that it receives in a
 * journal, word for word, for example
 *
 *     ru.quon.ZARN /ru/quon/ZARN ru.quon.ZARN.Install('/tmp/a.rpm', @a{sv} {})
 *
 * (the called name, object, interface and member, and the arguments in GLib's
 * text format, which shows their types), and answers as the test tells it. It
 * answers in a thread of its own, so that the code under test may call it and
 * block. It answers but does not note introspection and pings, which the bus
 * library sends. It notes and refuses calls of members that it has no answer for.
 */
class RecordingPeer
{
public:
    /** Joins the bus at address and owns names there. */
    RecordingPeer(const QString &address, const QStringList &names, Journal *journal);

    /** Leaves the bus. */
    ~RecordingPeer();

    /** Releases a name and stays on the bus. Everybody who watches the name is told before this returns. */
    void giveUp(const QString &name);

    /** The answers to the next calls of a member, one after the other. The last one is for all further calls too. */
    void answer(const QString &member, const QList<PeerAnswer> &answers);
    void answer(const QString &member, const PeerAnswer &answer);

    /** Calls of a member are no longer noted. */
    void overlook(const QString &member);

    /** Answers the call that has been held for longest; false when there is none. */
    bool answerHeld(const PeerAnswer &answer);

    /** Emits a signal with arguments in GLib's text format. */
    void emitSignal(const QString &path, const QString &interface, const QString &member, const QByteArray &arguments);

private:
    Q_DISABLE_COPY_MOVE(RecordingPeer)

    class Connection;

    std::shared_ptr<Connection> m_connection;
};
