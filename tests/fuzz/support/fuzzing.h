// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <utility>

// The functions that libFuzzer calls: once at the start, and with each input.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

/** Something that has to hold for every input. Otherwise libFuzzer keeps the input and shows the place of the call. */
inline void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

inline QByteArray bytes(const uint8_t *data, size_t size)
{
    return {reinterpret_cast<const char *>(data), static_cast<int>(size)};
}

/** The log of the process, which is not shown, because there would be some lines for each input. */
class QuietLog
{
public:
    QuietLog() = delete;

    static void install() { qInstallMessageHandler(count); }

    /** The number of warnings since the last call of this. */
    static int takeWarnings() { return std::exchange(s_warnings, 0); }

private:
    static void count(QtMsgType level, const QMessageLogContext &, const QString &)
    {
        s_warnings += level == QtWarningMsg;
    }

    static inline int s_warnings = 0;
};
