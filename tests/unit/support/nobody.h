// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QtGlobal>

#include <unistd.h>

/** Runs the process as a user without rights, to whom file permissions apply, for as long as the object lives. */
class Nobody
{
public:
    Nobody() { become(65534); }
    ~Nobody() { become(0); }

private:
    Q_DISABLE_COPY_MOVE(Nobody)

    static void become(uid_t user)
    {
        if (seteuid(user) != 0) {
            qFatal("Only root can run this test, because it changes its user");
        }
    }
};
