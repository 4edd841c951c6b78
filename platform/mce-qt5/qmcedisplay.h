// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>

#include <memory>

class QDBusMessage;
class QDBusPendingCallWatcher;

/**
 * Watches whether the display is on, which the display daemon MCE reports on the system bus.
 *
 * The display counts as on unless MCE says otherwise: before MCE's first answer, without
 * MCE or a system bus, and again when MCE vanishes. Answers and signals that are not
 * valid change nothing. No function waits for MCE.
 */
class QMceDisplay : public QObject
{
    Q_OBJECT

public:
    enum State {
        DisplayOff = 0,
        DisplayDim = 1,
        DisplayOn = 2,
    };
    Q_ENUM(State)

    /** Begins to watch; stateChanged() reports the true state later. */
    explicit QMceDisplay(QObject *parent = nullptr);
    ~QMceDisplay() override;

    State state() const;

Q_SIGNALS:
    /** state() has another value than before. */
    void stateChanged();

private Q_SLOTS:
    void handleStatusSignal(const QDBusMessage &signal);
    void handleOwnerChanged(const QString &service, const QString &oldOwner, const QString &newOwner);

private:
    void ask();
    void handleAnswer(QDBusPendingCallWatcher *query);
    void setState(State state);

    State m_state = DisplayOn;
    std::unique_ptr<QDBusPendingCallWatcher> m_query;
};
