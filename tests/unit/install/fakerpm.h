// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QStringList>

#include <rpm/header.h>
#include <rpm/rpmtypes.h>

/**
 * Stands in for the functions of librpm that read a package, in a program that has this among its own sources: headers
 * that no file can hold, results and errors at will. Opening and closing files, and all else, remains librpm's.
 */
namespace FakeRpm {

/** What the functions do. */
struct Script
{
    rpmRC readResult = RPMRC_OK;
    int readError = 0; ///< errno after reading
    Header header = nullptr; ///< what is read; reading hands out a reference to it
    bool seekFails = false;
    int verifyResult = 0;
};

extern Script script;

/** What has been called, for example "rpmReadPackageFile /tmp/a.rpm". */
extern QStringList calls;

/** Adds a tag to a header: count elements at data, in librpm's own form. */
bool addTag(Header header, rpmTagVal tag, rpmTagType type, const void *data, unsigned int count);

}
