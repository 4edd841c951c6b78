// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QString>

namespace Package {

/**
 * A removal of installed packages. It owns itself: create it with new, connect,
 * start() it, and never delete it. It reports failure() or success(), then
 * finished(), and is deleted afterwards.
 */
class Transaction : public QObject
{
    Q_OBJECT

public:
    Transaction();

    virtual void start() = 0;

    /** Reports failure("cancelled") and ends; what the back end is doing goes on. */
    virtual void cancel();

    /** Whether cancel() would stop what the back end is doing; false unless a kind of transaction can. */
    virtual bool canCancel();

Q_SIGNALS:
    /** How far the removal is, in the back end's own percentage. */
    void progress(int value);

    /** details: the back end's text. */
    void failure(const QString &details);

    /** The packages are gone, or were not there. */
    void success();

    /** The last signal. */
    void finished();
};

}
