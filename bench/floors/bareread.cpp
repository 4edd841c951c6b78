// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "bareread.h"

#include <rpm/header.h>
#include <rpm/rpmlib.h>
#include <rpm/rpmmacro.h>
#include <rpm/rpmtag.h>
#include <rpm/rpmtd.h>
#include <rpm/rpmts.h>

namespace {

// Looks at every element, as whoever converts them has to.
void walk(rpmtd td)
{
    rpmtdInit(td);
    while (rpmtdNext(td) != -1) {
        switch (rpmtdType(td)) {
        case RPM_INT32_TYPE:
            rpmtdGetUint32(td);
            break;
        case RPM_INT64_TYPE:
            rpmtdGetUint64(td);
            break;
        default:
            rpmtdGetString(td);
            break;
        }
    }
}

QString firstText(rpmtd td)
{
    rpmtdInit(td);
    rpmtdNext(td);
    return QString::fromUtf8(rpmtdGetString(td));
}

void take(rpmtd td, PackageTexts *texts)
{
    walk(td);
    switch (rpmtdTag(td)) {
    case RPMTAG_NAME:
        texts->name = firstText(td);
        break;
    case RPMTAG_VERSION:
        texts->version = firstText(td);
        break;
    case RPMTAG_SUMMARY:
        texts->summary = firstText(td);
        break;
    default:
        break;
    }
}

}

PackageTexts bareRead(const char *path)
{
    PackageTexts texts;
    FD_t fd = Fopen(path, "r");
    rpmFreeMacros(nullptr);
    rpmFreeRpmrc();
    rpmReadConfigFiles(nullptr, nullptr);
    rpmts ts = rpmtsCreate();
    Header header = nullptr;
    rpmReadPackageFile(ts, fd, path, &header);
    HeaderIterator iterator = headerInitIterator(header);
    rpmtd td = rpmtdNew();
    while (headerNext(iterator, td)) {
        take(td, &texts);
        rpmtdFreeData(td);
    }
    rpmtdFree(td);
    headerFreeIterator(iterator);
    headerFree(header);
    rpmtsFree(ts);
    Fclose(fd);
    return texts;
}
