// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "processstate.h"

#include <QLoggingCategory>

#include <dlfcn.h>
#include <malloc.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace {

constexpr unsigned int Patience = 20; // seconds

volatile std::sig_atomic_t passed = 0;

qint64 allocatedBytes()
{
    // The address sanitizer has an allocator of its own, which the C library cannot tell about.
    using Count = std::size_t();
    if (void *const count = dlsym(RTLD_DEFAULT, "__sanitizer_get_current_allocated_bytes")) {
        return static_cast<qint64>(reinterpret_cast<Count *>(count)());
    }
    return static_cast<qint64>(mallinfo2().uordblks);
}

// The code under test may repeat the interrupted call; only the end of the process helps then.
void pass(int)
{
    if (passed) {
        constexpr char message[] = "FAIL!  : a call that ought not to block goes on blocking\n";
        const ssize_t written = write(STDERR_FILENO, message, sizeof message - 1);
        _exit(written > 0 ? 1 : 2);
    }
    passed = 1;
    alarm(1);
}

}

QStringList openFiles()
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

qint64 bytesGainedPerCall(const std::function<void()> &call)
{
    constexpr int calls = 300;
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    call();
    const qint64 before = allocatedBytes();
    for (int i = 0; i < calls; ++i) {
        call();
    }
    const qint64 gained = allocatedBytes() - before;
    QLoggingCategory::setFilterRules(QString());
    return gained / calls;
}

Deadline::Deadline()
{
    passed = 0;
    struct sigaction interrupting = {};
    interrupting.sa_handler = pass; // and no SA_RESTART: the blocked call ends
    sigaction(SIGALRM, &interrupting, &m_previous);
    alarm(Patience);
}

Deadline::~Deadline()
{
    alarm(0);
    sigaction(SIGALRM, &m_previous, nullptr);
}

bool Deadline::hasPassed() const
{
    return passed != 0;
}
