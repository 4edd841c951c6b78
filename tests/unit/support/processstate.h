// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "texts.h"

#include <QLoggingCategory>
#include <QStringList>

#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <system_error>

#include <dlfcn.h>
#include <malloc.h>
#include <unistd.h>

/** The open file descriptors of this process with their files. */
inline QStringList openFiles()
{
    QStringList files;
    for (const auto &descriptor : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        const std::string target = std::filesystem::read_symlink(descriptor.path(), gone).string();
        // The descriptor that lists this very folder does not count.
        const bool lists = target.rfind("/proc/", 0) == 0 && target.find("/fd", target.size() - 3) != std::string::npos;
        if (!gone && !lists) {
            files.append(QString::fromStdString(descriptor.path().filename().string() + ": " + target));
        }
    }
    files.sort();
    return files;
}

inline qint64 allocatedBytes()
{
    // The address sanitizer has an allocator of its own, which the C library cannot tell about.
    using Count = std::size_t();
    if (void *const count = dlsym(RTLD_DEFAULT, "__sanitizer_get_current_allocated_bytes")) {
        return static_cast<qint64>(reinterpret_cast<Count *>(count)());
    }
    return static_cast<qint64>(mallinfo2().uordblks);
}

/**
 * The number of bytes that a call leaves allocated, on the average of 300 calls. The debug messages of the default
 * category are not shown meanwhile.
 */
inline qint64 bytesGainedPerCall(const std::function<void()> &call)
{
    constexpr int calls = 300;
    QLoggingCategory::setFilterRules("default.debug=false"_s);
    call();
    const qint64 before = allocatedBytes();
    for (int i = 0; i < calls; ++i) {
        call();
    }
    const qint64 gained = allocatedBytes() - before;
    QLoggingCategory::setFilterRules(QString());
    return gained / calls;
}

/**
 * Interrupts a blocking system call after 20 seconds, so that the test fails instead of hanging. Ends the process when
 * that does not help.
 */
class Deadline
{
public:
    Deadline()
    {
        s_passed = 0;
        struct sigaction interrupting = {};
        interrupting.sa_handler = pass; // and no SA_RESTART: the blocked call ends
        sigaction(SIGALRM, &interrupting, &m_previous);
        alarm(20);
    }

    ~Deadline()
    {
        alarm(0);
        sigaction(SIGALRM, &m_previous, nullptr);
    }

    /** Whether a call had to be interrupted. */
    bool hasPassed() const { return s_passed != 0; }

private:
    Q_DISABLE_COPY_MOVE(Deadline)

    // The code under test may repeat the interrupted call; only the end of the process helps then.
    static void pass(int)
    {
        if (s_passed) {
            constexpr char Message[] = "FAIL!  : a call that ought not to block goes on blocking\n";
            const ssize_t written = write(STDERR_FILENO, Message, sizeof Message - 1);
            _exit(written > 0 ? 1 : 2);
        }
        s_passed = 1;
        alarm(1);
    }

    static inline volatile std::sig_atomic_t s_passed = 0;

    struct sigaction m_previous;
};

/** Runs the process as a user without rights, to whom file permissions apply, for as long as the object lives. */
class Nobody
{
public:
    Nobody() { become(65534); }
    ~Nobody() { become(0); }

private:
    Q_DISABLE_COPY_MOVE(Nobody)

    static void become(uid_t user)
    {
        if (getuid() == 0 && seteuid(user) != 0) {
            qFatal("root cannot become another user");
        }
    }
};
