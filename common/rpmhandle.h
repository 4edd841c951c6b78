// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <rpm/header.h>
#include <rpm/rpmdb.h>
#include <rpm/rpmfi.h>
#include <rpm/rpmio.h>
#include <rpm/rpmtd.h>
#include <rpm/rpmts.h>

#include <memory>
#include <type_traits>

/** Deleters of librpm's handles. */
struct RpmRelease
{
    void operator()(FD_t file) const { Fclose(file); }
    void operator()(rpmts transactionSet) const { rpmtsFree(transactionSet); }
    void operator()(Header header) const { headerFree(header); }
    void operator()(HeaderIterator iterator) const { headerFreeIterator(iterator); }
    void operator()(rpmtd data) const { rpmtdFree(data); }
    void operator()(rpmdbMatchIterator iterator) const { rpmdbFreeIterator(iterator); }
    void operator()(rpmfi files) const { rpmfiFree(files); }
};

/** Owns one of librpm's handles, for example RpmHandle<rpmts>. */
template<typename Handle>
using RpmHandle = std::unique_ptr<std::remove_pointer_t<Handle>, RpmRelease>;
