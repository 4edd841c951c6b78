// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QStringList>

#include <csignal>
#include <functional>

/** The open file descriptors of this process with their files. */
QStringList openFiles();

/**
 * The number of bytes that a call leaves allocated, on the average of 300 calls. The debug messages of the default
 * category are not shown meanwhile.
 */
qint64 bytesGainedPerCall(const std::function<void()> &call);

/**
 * Interrupts a blocking system call after 20 seconds, so that the test fails instead of hanging. Ends the process when
 * that does not help.
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
