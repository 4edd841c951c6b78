// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause
// Shared by all dialogs of the engine, so that each gets a number of its own.
.pragma library

var last = 0;

function next()
{
    return ++last;
}
