// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "barerpm.h"

#include <rpm/header.h>
#include <rpm/rpmdb.h>
#include <rpm/rpmfi.h>
#include <rpm/rpmlib.h>
#include <rpm/rpmmacro.h>
#include <rpm/rpmtag.h>
#include <rpm/rpmtd.h>
#include <rpm/rpmts.h>

#include <cstring>

namespace {

// A reader that converts the elements has to look at each of them.
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

void take(rpmtd td, BareRpm::Texts *texts)
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

bool isLauncher(const char *path)
{
    const char folder[] = "/usr/share/applications/";
    const char suffix[] = ".desktop";
    const size_t length = std::strlen(path);
    return std::strncmp(path, folder, sizeof folder - 1) == 0 && length >= sizeof suffix
            && std::strcmp(path + length + 1 - sizeof suffix, suffix) == 0;
}

}

BareRpm::Texts BareRpm::read(const char *path)
{
    Texts texts;
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

QStringList BareRpm::findLaunchers(const char *name)
{
    static const int configured = rpmReadConfigFiles(nullptr, nullptr);
    Q_UNUSED(configured)

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
