// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "nobody.h"

#include <QtGlobal>

#include <unistd.h>

namespace {

constexpr uid_t nobody = 65534;

void become(uid_t user)
{
    if (seteuid(user) != 0) {
        qFatal("this test changes its user, which only root can");
    }
}

}

Nobody::Nobody()
{
    become(nobody);
}

Nobody::~Nobody()
{
    become(0);
}
