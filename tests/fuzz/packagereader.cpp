// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "fuzzing.h"
#include "inputfile.h"
#include "rpminfo.h"
#include "smallrpmconfiguration.h"

#include <rpm/rpmlog.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <string>

namespace {

// librpm is not instrumented. Its messages, without numbers, take the place of edges.
__attribute__((used, section("__libfuzzer_extra_counters"))) std::array<uint8_t, 4096> messages;

int noteMessage(rpmlogRec message, rpmlogCallbackData)
{
    std::string text = rpmlogRecMessage(message);
    text.erase(std::remove_if(text.begin(), text.end(), [](unsigned char c) { return std::isxdigit(c); }), text.end());
    messages[std::hash<std::string>()(text) % messages.size()] = 1;
    return 0;
}

}

int LLVMFuzzerInitialize(int *, char ***)
{
    static const SmallRpmConfiguration configuration;
    QuietLog::install();
    rpmlogSetCallback(noteMessage, nullptr);
    return 0;
}

/** A package file. There is no key, so no signature is valid. */
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const InputFile file(bytes(data, size));
    RpmInfo info;
    info.readPackage(file.path());
    require(info.fileName() == file.path());
    require(!info.isSignatureValid());
    require(info.isValid() || (info.name().isEmpty() && info.version().isEmpty() && info.summary().isEmpty()));
    return 0;
}
