// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "fakerpmdatabase.h"

#include <rpm/rpmdb.h>
#include <rpm/rpmfi.h>
#include <rpm/rpmlib.h>
#include <rpm/rpmts.h>

namespace FakeRpmDatabase {

QList<QStringList> packages;
QStringList calls;

}

namespace {

// The handles are the addresses of their names.
char transactionSet[] = "ts";
char iterator[] = "packages";
char header[] = "package";
char fileList[] = "files";

int packageIndex; // the iterator's
int fileIndex; // the file list's
QByteArray path;

template<typename Handle>
Handle handle(char *name)
{
    return reinterpret_cast<Handle>(name);
}

template<typename Handle>
QString name(Handle handle)
{
    return handle ? QString::fromLatin1(reinterpret_cast<const char *>(handle)) : QStringLiteral("null");
}

void note(const char *function, const QStringList &arguments = {})
{
    FakeRpmDatabase::calls.append(
            QStringLiteral("%1(%2)").arg(QLatin1String(function), arguments.join(QLatin1String(", "))));
}

}

// The program's own definitions come before those of the shared library.
extern "C" {

int rpmReadConfigFiles(const char *file, const char *target)
{
    note("rpmReadConfigFiles", {name(file), name(target)});
    return 0;
}

rpmts rpmtsCreate()
{
    note("rpmtsCreate");
    return handle<rpmts>(transactionSet);
}

// The key is bytes and not text: it is written down as Latin-1, a character a byte.
rpmdbMatchIterator rpmtsInitIterator(const rpmts ts, rpmDbiTagVal tag, const void *key, size_t length)
{
    note("rpmtsInitIterator", {name(ts), QString::number(tag), name(key), QString::number(length)});
    packageIndex = -1;
    return handle<rpmdbMatchIterator>(iterator);
}

Header rpmdbNextIterator(rpmdbMatchIterator packages)
{
    note("rpmdbNextIterator", {name(packages)});
    return ++packageIndex < FakeRpmDatabase::packages.size() ? handle<Header>(header) : nullptr;
}

rpmfi rpmfiNew(const rpmts ts, Header package, rpmTagVal tag, rpmfiFlags flags)
{
    note("rpmfiNew", {name(ts), name(package), QString::number(tag), QString::number(flags)});
    return handle<rpmfi>(fileList);
}

rpmfi rpmfiInit(rpmfi files, int first)
{
    note("rpmfiInit", {name(files), QString::number(first)});
    fileIndex = first - 1;
    return files;
}

int rpmfiNext(rpmfi files)
{
    note("rpmfiNext", {name(files)});
    return ++fileIndex < FakeRpmDatabase::packages.at(packageIndex).size() ? fileIndex : -1;
}

const char *rpmfiFN(rpmfi files)
{
    note("rpmfiFN", {name(files)});
    path = FakeRpmDatabase::packages.at(packageIndex).at(fileIndex).toUtf8();
    return path.constData();
}

rpmfi rpmfiFree(rpmfi files)
{
    note("rpmfiFree", {name(files)});
    return nullptr;
}

rpmdbMatchIterator rpmdbFreeIterator(rpmdbMatchIterator packages)
{
    note("rpmdbFreeIterator", {name(packages)});
    return nullptr;
}

rpmts rpmtsFree(rpmts ts)
{
    note("rpmtsFree", {name(ts)});
    return nullptr;
}
}
