// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "fuzzing.h"
#include "inputfile.h"

#include <accesspolicy.h>

#include <QTextCodec>

namespace {

const QByteArray Key = "[Applications]\nInstallationEnabled=";
const QByteArray Refusal = "\n[Applications]\nInstallationEnabled=false\n";

bool isEnabled(const QByteArray &text)
{
    const InputFile file(text);
    const bool enabled = Velmora::AccessPolicy(file.path()).applicationInstallationEnabled();
    // A refusal may have its reason in the file, but nothing is wrong with a file that permits.
    require(!enabled || QuietLog::takeWarnings() == 0);
    require(QuietLog::takeWarnings() <= 1);
    return enabled;
}

bool isText(const QByteArray &text)
{
    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(text.constData(), text.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0 && !text.contains('\0');
}

}

int LLVMFuzzerInitialize(int *, char ***)
{
    QuietLog::install();
    return 0;
}

/** The access policy. Nobody gains a right by damaging the file, only one word permits, and the last one counts. */
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray text = bytes(data, size);
    require(!isEnabled(text) || isText(text));
    require(!isEnabled(text + Refusal));
    require(text.contains('\n') || text.trimmed() == "true" || !isEnabled(Key + text));
    return 0;
}
