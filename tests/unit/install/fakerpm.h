// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QStringList>

#include <rpm/header.h>
#include <rpm/rpmtypes.h>

#include <functional>

/**
 * Replaces librpm's functions that read a package, and the C library's strerror(), in a program that has this among its
 * own sources. A test chooses their results, and headers that no file can hold. All other functions are librpm's own.
 */
namespace FakeRpm {

/** The results of the functions. */
struct Script
{
    std::function<void()> beforeOpening = [] {}; /**< Happens after the look at the file, before librpm opens it. */
    rpmRC readResult = RPMRC_OK;
    int readError = 0; /**< errno after reading. */
    char *errorText = nullptr; /**< The text of any error; null for the C library's own texts. */
    Header header = nullptr; /**< Reading returns a reference to it. */
    bool seekFails = false;
    int verifyResult = 0;
};

extern Script script;

/** The calls, for example "Fopen r /tmp/a.rpm". */
extern QStringList calls;

/** Adds a tag to a header: count elements at data, in librpm's own form. */
bool addTag(Header header, rpmTagVal tag, rpmTagType type, const void *data, unsigned int count);

}
