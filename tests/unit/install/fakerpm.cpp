// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "fakerpm.h"

#include "texts.h"

#include <QtGlobal>

#include <rpm/rpmcli.h>
#include <rpm/rpmio.h>
#include <rpm/rpmlib.h>
#include <rpm/rpmtd.h>

#include <cerrno>
#include <cstring>

#include <dlfcn.h>

namespace FakeRpm {

Script script;
QStringList calls;

bool addTag(Header header, rpmTagVal tag, rpmTagType type, const void *data, unsigned int count)
{
    rpmtd_s td = {};
    td.tag = tag;
    td.type = type;
    td.count = count;
    td.data = const_cast<void *>(data);
    return headerPut(header, &td, HEADERPUT_DEFAULT) == 1;
}

}

using FakeRpm::calls;
using FakeRpm::script;

// The program's own definitions come before those of the shared library.
extern "C" {

char *strerror(int error) noexcept
{
    return script.errorText ? script.errorText
                            : reinterpret_cast<decltype(&strerror)>(dlsym(RTLD_NEXT, "strerror"))(error);
}

FD_t Fopen(const char *path, const char *mode)
{
    calls.append("Fopen %1 %2"_s.arg(QLatin1String(mode), QString::fromUtf8(path)));
    script.beforeOpening();
    return reinterpret_cast<decltype(&Fopen)>(dlsym(RTLD_NEXT, "Fopen"))(path, mode);
}

int rpmReadConfigFiles(const char *file, const char *target)
{
    calls.append(file || target ? "rpmReadConfigFiles with arguments"_s : "rpmReadConfigFiles"_s);
    return 0;
}

rpmRC rpmReadPackageFile(rpmts ts, FD_t fd, const char *path, Header *header)
{
    if (!ts) {
        qFatal("no transaction set");
    }
    calls.append("rpmReadPackageFile "_s + QString::fromUtf8(path));
    char lead[10];
    Fread(lead, 1, sizeof lead, fd);
    *header = headerLink(script.header);
    errno = script.readError;
    return script.readResult;
}

int Fseek(FD_t fd, off_t offset, int whence)
{
    calls.append("Fseek"_s);
    if (script.seekFails) {
        return -1;
    }
    return reinterpret_cast<decltype(&Fseek)>(dlsym(RTLD_NEXT, "Fseek"))(fd, offset, whence);
}

int rpmVerifySignatures(QVA_t arguments, rpmts ts, FD_t fd, const char *path)
{
    if (!ts) {
        qFatal("no transaction set");
    }
    calls.append(
            "rpmVerifySignatures%1 %2 from %3"_s.arg(arguments == &rpmQVKArgs ? QString() : " with other arguments"_s,
                                                     QString::fromUtf8(path), QString::number(Ftell(fd))));
    return script.verifyResult;
}
}
