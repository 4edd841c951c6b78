// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// The functions of librpm that the service calls, under their own names: each
// one loads librpm when it is first called and hands the call on.
//
// librpm brings ten libraries along whose thousands of symbols are all looked
// up when they are loaded. Linked in the ordinary way they would be looked for
// in some fifty libraries that precede them, which made up a fifth of the
// instructions from start to bus name. Here they are looked for among librpm's
// own libraries first, and not before there is a package to read or to remove.

#include <rpm/header.h>
#include <rpm/rpmcli.h>
#include <rpm/rpmdb.h>
#include <rpm/rpmfi.h>
#include <rpm/rpmio.h>
#include <rpm/rpmlib.h>
#include <rpm/rpmmacro.h>
#include <rpm/rpmtd.h>
#include <rpm/rpmts.h>

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

// Hands a call on to librpm's function of the same name.
#define ON_DEMAND(Result, name, parameters, arguments)                                                                 \
    Result name parameters                                                                                             \
    {                                                                                                                  \
        static auto *const function = find(name, #name);                                                               \
        return function arguments;                                                                                     \
    }

extern "C" {

// What the verification is to check, all of it: nobody changes that.
rpmQVKArguments_s rpmQVKArgs = {};

ON_DEMAND(Header, headerFree, (Header header), (header))
ON_DEMAND(HeaderIterator, headerFreeIterator, (HeaderIterator hi), (hi))
ON_DEMAND(HeaderIterator, headerInitIterator, (Header header), (header))
ON_DEMAND(int, headerNext, (HeaderIterator hi, rpmtd td), (hi, td))
ON_DEMAND(int, Fclose, (FD_t fd), (fd))
ON_DEMAND(FD_t, Fopen, (const char *path, const char *mode), (path, mode))
ON_DEMAND(int, Fseek, (FD_t fd, off_t offset, int whence), (fd, offset, whence))
ON_DEMAND(rpmdbMatchIterator, rpmdbFreeIterator, (rpmdbMatchIterator mi), (mi))
ON_DEMAND(Header, rpmdbNextIterator, (rpmdbMatchIterator mi), (mi))
ON_DEMAND(const char *, rpmfiFN, (rpmfi fi), (fi))
ON_DEMAND(rpmfi, rpmfiFree, (rpmfi fi), (fi))
ON_DEMAND(rpmfi, rpmfiInit, (rpmfi fi, int fx), (fi, fx))
ON_DEMAND(rpmfi, rpmfiNew, (rpmts ts, Header header, rpmTagVal tagN, rpmfiFlags flags), (ts, header, tagN, flags))
ON_DEMAND(int, rpmfiNext, (rpmfi fi), (fi))
ON_DEMAND(void, rpmFreeMacros, (rpmMacroContext mc), (mc))
ON_DEMAND(void, rpmFreeRpmrc, (), ())
ON_DEMAND(int, rpmReadConfigFiles, (const char *file, const char *target), (file, target))
ON_DEMAND(rpmRC, rpmReadPackageFile, (rpmts ts, FD_t fd, const char *fn, Header *hdrp), (ts, fd, fn, hdrp))
ON_DEMAND(int, rpmVerifySignatures, (QVA_t qva, rpmts ts, FD_t fd, const char *fn), (qva, ts, fd, fn))
ON_DEMAND(rpmtd, rpmtdFree, (rpmtd td), (td))
ON_DEMAND(void, rpmtdFreeData, (rpmtd td), (td))
ON_DEMAND(const char *, rpmtdGetString, (rpmtd td), (td))
ON_DEMAND(uint32_t *, rpmtdGetUint32, (rpmtd td), (td))
ON_DEMAND(uint64_t *, rpmtdGetUint64, (rpmtd td), (td))
ON_DEMAND(int, rpmtdInit, (rpmtd td), (td))
ON_DEMAND(rpmtd, rpmtdNew, (), ())
ON_DEMAND(int, rpmtdNext, (rpmtd td), (td))
ON_DEMAND(rpmTagVal, rpmtdTag, (rpmtd td), (td))
ON_DEMAND(rpmTagType, rpmtdType, (rpmtd td), (td))
ON_DEMAND(rpmts, rpmtsCreate, (), ())
ON_DEMAND(rpmts, rpmtsFree, (rpmts ts), (ts))
ON_DEMAND(rpmdbMatchIterator, rpmtsInitIterator, (rpmts ts, rpmDbiTagVal rpmtag, const void *keyp, size_t keylen),
          (ts, rpmtag, keyp, keylen))
}
