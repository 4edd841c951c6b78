// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

/** The line of a terminal that says what is being waited for, and for how long. */
class ProgressLine : public QObject
{
    Q_OBJECT

public:
    /** clock: began when the program started. */
    explicit ProgressLine(QElapsedTimer clock, QObject *parent = nullptr);

    /** Shows a text in the place of the last one. A line that is too long loses the subject's beginning first. */
    void show(const QString &subject, const QString &text);
    /** Empties the line, so that others can be printed. */
    void clear();

private:
    void draw();

    const QElapsedTimer m_clock;
    QTimer m_timer;
    QString m_subject;
    QString m_text;
};
