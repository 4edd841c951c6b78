// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "fuzzing.h"
#include "inputfile.h"
#include "texts.h"

#include <mdesktopentry.h>

namespace {

const QString Key = "Desktop Entry/X-zindro-apkfile"_s;

}

int LLVMFuzzerInitialize(int *, char ***)
{
    QuietLog::install();
    return 0;
}

/** A launcher file, as the search for its owner reads it. A damaged file has no keys; else the last value counts. */
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray text = bytes(data, size);
    const InputFile file(text);
    const MDesktopEntry entry(file.path());
    require(entry.contains(Key) || entry.value(Key).isEmpty());
    require(!entry.value(Key).contains(QChar::Null));

    const InputFile longer(text + "\n[Desktop Entry]\nX-zindro-apkfile=/a\\sb\n");
    const MDesktopEntry longerEntry(longer.path());
    require(!longerEntry.contains(Key) || longerEntry.value(Key) == "/a b"_s);
    require(!entry.contains(Key) || longerEntry.contains(Key));
    return 0;
}
