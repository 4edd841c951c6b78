// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QtGlobal>

class Journal;

/**
 * Notes every line of the process's log in a journal for as long as it lives,
 * for example "warning: text"; lines of a category other than "default" name
 * it, "debug(category): text". The test's own output shows them too. One at a time.
 */
class MessageLog
{
public:
    explicit MessageLog(Journal *journal);
    ~MessageLog();

private:
    Q_DISABLE_COPY_MOVE(MessageLog)
};
