// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>

/**
 * Whether opening a file cannot block for ever: false for a FIFO, a socket and
 * a terminal, which wait for somebody at the other end. A file that does not
 * exist, or that may not be opened, does not block.
 *
 * path: UTF-8, as the file system takes it, like librpm's Fopen(): a URL or "-"
 * is the name of a file like any other.
 */
bool opensWithoutBlocking(const QByteArray &path);
