// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// The functions of librpm that the service calls, under their own names: each
// one loads librpm when it is first called and hands the call on.
//
// librpm brings ten libraries along whose thousands of symbols are all looked
// up when they are loaded. Linked in the ordinary way they would be looked for
// in some fifty libraries that precede them, which made up a fifth of the
// instructions from start to bus name. Here they are looked for among librpm's
// own libraries first, and not before there is a package to read.

#include <rpm/header.h>
#include <rpm/rpmcli.h>
#include <rpm/rpmio.h>
#include <rpm/rpmlib.h>
#include <rpm/rpmmacro.h>
#include <rpm/rpmtd.h>
#include <rpm/rpmts.h>
#include <rpm/rpmurl.h>

#include <QtGlobal>

#include <dlfcn.h>

namespace {

// Loaded once, for the life of the process.
void *library()
{
    static void *const handle = dlopen(LIBRPM_SONAME, RTLD_LAZY | RTLD_LOCAL | RTLD_DEEPBIND);
    if (!handle) {
        qFatal("%s", dlerror());
    }
    return handle;
}

template<typename Function>
Function *find(Function *declared, const char *name)
{
    Q_UNUSED(declared)

    void *const symbol = dlsym(library(), name);
    if (!symbol) {
        qFatal("%s", dlerror());
    }
    return reinterpret_cast<Function *>(symbol);
}

}

extern "C" {

// What the verification is to check, all of it: nobody changes that.
rpmQVKArguments_s rpmQVKArgs = {};

Header headerFree(Header header)
{
    static auto *const function = find(&headerFree, __func__);
    return function(header);
}

HeaderIterator headerFreeIterator(HeaderIterator iterator)
{
    static auto *const function = find(&headerFreeIterator, __func__);
    return function(iterator);
}

HeaderIterator headerInitIterator(Header header)
{
    static auto *const function = find(&headerInitIterator, __func__);
    return function(header);
}

int headerNext(HeaderIterator iterator, rpmtd td)
{
    static auto *const function = find(&headerNext, __func__);
    return function(iterator, td);
}

int Fclose(FD_t fd)
{
    static auto *const function = find(&Fclose, __func__);
    return function(fd);
}

FD_t Fopen(const char *path, const char *mode)
{
    static auto *const function = find(&Fopen, __func__);
    return function(path, mode);
}

int Fseek(FD_t fd, off_t offset, int whence)
{
    static auto *const function = find(&Fseek, __func__);
    return function(fd, offset, whence);
}

void rpmFreeMacros(rpmMacroContext context)
{
    static auto *const function = find(&rpmFreeMacros, __func__);
    function(context);
}

void rpmFreeRpmrc()
{
    static auto *const function = find(&rpmFreeRpmrc, __func__);
    function();
}

int rpmReadConfigFiles(const char *file, const char *target)
{
    static auto *const function = find(&rpmReadConfigFiles, __func__);
    return function(file, target);
}

rpmRC rpmReadPackageFile(rpmts ts, FD_t fd, const char *path, Header *header)
{
    static auto *const function = find(&rpmReadPackageFile, __func__);
    return function(ts, fd, path, header);
}

int rpmVerifySignatures(QVA_t arguments, rpmts ts, FD_t fd, const char *path)
{
    static auto *const function = find(&rpmVerifySignatures, __func__);
    return function(arguments, ts, fd, path);
}

rpmtd rpmtdFree(rpmtd td)
{
    static auto *const function = find(&rpmtdFree, __func__);
    return function(td);
}

void rpmtdFreeData(rpmtd td)
{
    static auto *const function = find(&rpmtdFreeData, __func__);
    function(td);
}

const char *rpmtdGetString(rpmtd td)
{
    static auto *const function = find(&rpmtdGetString, __func__);
    return function(td);
}

uint32_t *rpmtdGetUint32(rpmtd td)
{
    static auto *const function = find(&rpmtdGetUint32, __func__);
    return function(td);
}

uint64_t *rpmtdGetUint64(rpmtd td)
{
    static auto *const function = find(&rpmtdGetUint64, __func__);
    return function(td);
}

int rpmtdInit(rpmtd td)
{
    static auto *const function = find(&rpmtdInit, __func__);
    return function(td);
}

rpmtd rpmtdNew()
{
    static auto *const function = find(&rpmtdNew, __func__);
    return function();
}

int rpmtdNext(rpmtd td)
{
    static auto *const function = find(&rpmtdNext, __func__);
    return function(td);
}

rpmTagVal rpmtdTag(rpmtd td)
{
    static auto *const function = find(&rpmtdTag, __func__);
    return function(td);
}

rpmTagType rpmtdType(rpmtd td)
{
    static auto *const function = find(&rpmtdType, __func__);
    return function(td);
}

rpmts rpmtsCreate()
{
    static auto *const function = find(&rpmtsCreate, __func__);
    return function();
}

rpmts rpmtsFree(rpmts ts)
{
    static auto *const function = find(&rpmtsFree, __func__);
    return function(ts);
}

urltype urlPath(const char *url, const char **path)
{
    static auto *const function = find(&urlPath, __func__);
    return function(url, path);
}

}
