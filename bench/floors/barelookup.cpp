// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "barelookup.h"

#include <rpm/header.h>
#include <rpm/rpmdb.h>
#include <rpm/rpmfi.h>
#include <rpm/rpmts.h>

#include <cstring>

namespace {

bool isLauncher(const char *path)
{
    const char folder[] = "/usr/share/applications/";
    const char suffix[] = ".desktop";
    const size_t length = std::strlen(path);
    return std::strncmp(path, folder, sizeof folder - 1) == 0 && length >= sizeof suffix
            && std::strcmp(path + length + 1 - sizeof suffix, suffix) == 0;
}

}

QStringList bareLookup(const char *name)
{
    QStringList launchers;
    rpmts ts = rpmtsCreate();
    rpmdbMatchIterator iterator = rpmtsInitIterator(ts, RPMDBI_NAME, name, 0);
    if (Header header = rpmdbNextIterator(iterator)) {
        rpmfi files = rpmfiInit(rpmfiNew(ts, header, RPMTAG_BASENAMES, RPMFI_FLAGS_QUERY), 0);
        while (rpmfiNext(files) >= 0) {
            const char *path = rpmfiFN(files);
            if (isLauncher(path)) {
                launchers.append(QString::fromUtf8(path));
            }
        }
        rpmfiFree(files);
    }
    rpmdbFreeIterator(iterator);
    rpmtsFree(ts);
    return launchers;
}
