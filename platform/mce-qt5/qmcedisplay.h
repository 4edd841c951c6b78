// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>

#include <memory>

class QDBusMessage;
class QDBusPendingCallWatcher;

/**
 * Watches whether the display is on, as the display daemon MCE tells on the system bus.
 *
 * The display counts as on as long as nobody says otherwise: before MCE's first answer,
 * where there is no MCE or no system bus, and again when MCE vanishes. Answers and
 * signals that make no sense change nothing. Nothing here waits for MCE.
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

    /** Begins to watch; the true state arrives later, through stateChanged(). */
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
