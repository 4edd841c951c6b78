// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QStringList>

#include <csignal>
#include <functional>

/** What the open file descriptors of this process refer to. */
QStringList openFiles();

/**
 * How many bytes more are allocated after a call than before it, on the average of 300 calls. The debug messages of the
 * default category are not shown meanwhile.
 */
qint64 bytesGainedPerCall(const std::function<void()> &call);

/**
 * Interrupts a blocking system call after a few seconds, so that a test which ought not to block fails instead of
 * hanging; ends the process when that does not help.
 */
class Deadline
{
public:
    Deadline();
    ~Deadline();
    Deadline(const Deadline &) = delete;
    Deadline &operator=(const Deadline &) = delete;

    /** Whether a call had to be interrupted. */
    bool hasPassed() const;

private:
    struct sigaction m_previous;
};
