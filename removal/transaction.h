// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QString>

namespace Package {

/**
 * A removal of installed packages, which owns itself: create it with new, connect
 * to its signals, start() it, and never delete it. It reports failure() or
 * success(), then finished(), and deletes itself.
 */
class Transaction : public QObject
{
    Q_OBJECT

public:
    Transaction();

    virtual void start() = 0;

    /** Reports failure("cancelled") and ends. The back end is not stopped. */
    virtual void cancel();

    /** Whether cancel() would stop the back end, which no transaction of this kind can. */
    virtual bool canCancel();

Q_SIGNALS:
    /** The progress of the removal; value is the back end's percentage, unchanged. */
    void progress(int value);

    /** The removal has failed; details is the back end's text. */
    void failure(const QString &details);

    /** The packages are gone, or were not there. */
    void success();

    /** The last signal. */
    void finished();
};

}
