// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>

/**
 * Whether opening a file and reading it return at once. They may not for a FIFO, a
 * socket, and a device such as a terminal, which wait for a peer; the answer is false
 * for these. It is true for the devices of the kernel's memory, such as /dev/null, and
 * for a file that does not exist or may not be opened.
 *
 * path: UTF-8, a plain file name as librpm's Fopen() takes it. A URL or "-" has
 * no special meaning.
 */
bool opensWithoutBlocking(const QByteArray &path);
