// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QMetaType>

#include <functional>

/** What a peer does with a call: it answers, or it doesn't. */
struct PeerAnswer
{
    enum class Kind { Values, Error, Held, Death };

    /** Answers with values in GLib's text format for a tuple, for example "(true,)" or "('text', int64 5)". */
    static PeerAnswer values(const QByteArray &text = QByteArrayLiteral("()"));

    /** Answers with an error. */
    static PeerAnswer error(const QByteArray &name, const QByteArray &message = {});

    /** Doesn't answer until RecordingPeer::answerHeld(). */
    static PeerAnswer held();

    /** Leaves the bus without an answer. */
    static PeerAnswer death();

    /** Runs an action before the answer, in the peer's thread, while the caller waits. */
    PeerAnswer after(const std::function<void()> &preparation) const;

    Kind kind = Kind::Values;
    QByteArray text;
    QByteArray errorName;
    std::function<void()> preparation;
};

Q_DECLARE_METATYPE(PeerAnswer)
