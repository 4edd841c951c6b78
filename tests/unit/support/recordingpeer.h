// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

/** A peer's reaction to a call. */
struct PeerAnswer
{
    enum class Kind { Values, Error, Held, Death };

    /** Answers with values in GLib's text format for a tuple, for example "(true,)" or "('text', int64 5)". */
    static PeerAnswer values(const QByteArray &text = "()") { return {Kind::Values, text, {}, {}}; }

    static PeerAnswer error(const QByteArray &name, const QByteArray &message = {})
    {
        return {Kind::Error, message, name, {}};
    }

    /** Does not answer until RecordingPeer::answerHeld(). */
    static PeerAnswer held() { return {Kind::Held, {}, {}, {}}; }

    /** Leaves the bus without an answer. */
    static PeerAnswer death() { return {Kind::Death, {}, {}, {}}; }

    /** Runs an action before the answer, in the peer's thread, while the caller waits. */
    PeerAnswer after(const std::function<void()> &action) const { return {kind, text, errorName, action}; }

    Kind kind = Kind::Values;
    QByteArray text;
    QByteArray errorName;
    std::function<void()> preparation;
};

Q_DECLARE_METATYPE(PeerAnswer)

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
