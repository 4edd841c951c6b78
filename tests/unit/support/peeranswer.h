// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QMetaType>

#include <functional>

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
