// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

// GLib's headers use names that Qt takes for keywords.
using GVariant = struct _GVariant;

struct ReleaseValue
{
    void operator()(GVariant *value) const;
};

/** The arguments of a message: a tuple. */
using Arguments = std::unique_ptr<GVariant, ReleaseValue>;

/** Arguments in GLib's text format, for example "('on',)". */
Arguments argumentsOf(const char *text);

/**
 * The arguments that an input stands for: a line with their signature, then the tuple in GLib's serialised form. Data
 * that do not fit the signature give arguments all the same. Null if the signature, or that of a variant, is none of
 * D-Bus.
 */
Arguments argumentsIn(const QByteArray &input);

/**
 * The system bus of this process, with one peer that has all names. Both are a part of the process and in a thread of
 * their own, so that a call takes some ten microseconds. There is no session bus.
 *
 * The peer answers introspection and pings by itself, and calls of members without an answer with an error.
 */
class PeerBus
{
public:
    /** Connects Qt to the bus. There can be one in a process, for good. */
    static PeerBus &instance();

    /** The answer to all further calls of a member. */
    void answer(const QString &member, const Arguments &arguments);
    void answerWithError(const QString &member, const Arguments &arguments);

    /** Notes the first arguments, which have to be texts, of all further calls of a member. */
    void note(const QString &member);

    /** The noted arguments since the last call of this. */
    QStringList takeCalls(const QString &member);

    void emitSignal(const char *path, const char *interface, const char *member, const Arguments &arguments);

    /** Waits until everything that the peer has sent has been delivered to the process's objects. */
    void settle() const;

private:
    Q_DISABLE_COPY_MOVE(PeerBus)
    PeerBus();

    class Peer;
    Peer *const m_peer;
};
