// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "qmcedisplay.h"

#include "journal.h"
#include "messagelog.h"
#include "recordingpeer.h"

#include <QDBusConnection>

#include <memory>
#include <optional>

/**
 * A watcher of the display, and an MCE that does as it is told. The journal has the
 * questions to MCE, the changes of the state and the lines of the log.
 */
class QMceDisplayScene : public QObject
{
    Q_OBJECT

protected:
    static const QString Bus;
    static const QString Mce;
    static const QString Question;
    static const QString TurnsOff;
    static const QString Dims;
    static const QString TurnsOn;

    void setUpScene();
    void tearDownScene();

    /** Another participant of the bus, which has the names and answers like MCE. */
    std::unique_ptr<RecordingPeer> makePeer(const QStringList &names, const PeerAnswer &answer = PeerAnswer::held());
    void startMce(const PeerAnswer &answer = PeerAnswer::held());

    /** Begins to watch the display. */
    void watch();

    /** Begins to watch the display with the values as MCE's answer; then empties the journal. */
    bool watchWith(const QByteArray &values);

    /** MCE answers what it was asked first; true when the answer has arrived. */
    bool answerHeld(const QByteArray &values);

    void emitStatus(const QByteArray &values) { emitStatus(*m_mce, values); }
    void emitStatus(RecordingPeer &peer, const QByteArray &values);

    /** Waits until the bus, the peer and the watcher have said everything that they have to say to each other. */
    bool settle(const QString &peer = Mce);

    /** What the journal has; it is empty then. */
    QStringList takeEntries();

    QDBusConnection m_bus = QDBusConnection::systemBus();
    std::unique_ptr<RecordingPeer> m_mce;
    std::unique_ptr<QMceDisplay> m_display;

private:
    Journal m_journal;
    std::optional<MessageLog> m_log;
};
