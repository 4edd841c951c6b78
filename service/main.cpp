// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "installclient.h"
#include "startup.h"

#include <cstring>

int main(int argc, char **argv)
{
    if (argc >= 3 && std::strcmp(argv[1], "install") == 0) {
        return requestInstallation(argv[2]);
    }
    return runService(argc, argv);
}
