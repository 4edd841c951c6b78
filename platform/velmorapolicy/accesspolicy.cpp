// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "accesspolicy.h"

#include <QDebug>
#include <QFile>

#include <glib.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr int SizeLimit = 64 * 1024;

// The policy's answer. A problem that isn't empty is the reason why the policy is unusable.
struct Finding
{
    bool enabled;
    QString problem;
};

Finding unusable(const QString &problem)
{
    return {false, problem};
}

Finding evaluateValue(const char *value)
{
    const QByteArray word(value);
    if (word == "true") {
        return {true, {}};
    }
    if (word == "false") {
        return {false, {}};
    }
    return unusable(QStringLiteral("InstallationEnabled is neither true nor false"));
}

Finding evaluateText(const QByteArray &text)
{
    // GLib takes a line that begins with a zero byte for an empty one, so a file of zeros,
    // which a crash may leave, would pass for a policy without restrictions.
    if (!g_utf8_validate(text.constData(), text.size(), nullptr)) {
        return unusable(QStringLiteral("not UTF-8 text"));
    }

    g_autoptr(GKeyFile) keys = g_key_file_new();
    g_autoptr(GError) error = nullptr;
    if (!g_key_file_load_from_data(keys, text.constData(), gsize(text.size()), G_KEY_FILE_NONE, &error)) {
        return unusable(QString::fromUtf8(error->message));
    }

    // g_key_file_get_boolean() would accept 1 and 0 too.
    g_autofree gchar *value = g_key_file_get_value(keys, "Applications", "InstallationEnabled", nullptr);
    return value ? evaluateValue(g_strchomp(value)) : Finding{true, {}};
}

Finding evaluateFile(QFile &file)
{
    struct stat status;
    if (fstat(file.handle(), &status) == -1) {
        return unusable(qt_error_string(errno));
    }
    if (!S_ISREG(status.st_mode)) {
        return unusable(QStringLiteral("not a regular file"));
    }

    const QByteArray text = file.read(SizeLimit + 1);
    if (file.error() != QFileDevice::NoError) {
        return unusable(file.errorString());
    }
    if (text.size() > SizeLimit) {
        return unusable(QStringLiteral("larger than 64 KiB"));
    }
    return evaluateText(text);
}

// A dangling link isn't absent, because somebody meant a policy to be there.
bool isAbsent(const QByteArray &path)
{
    struct stat status;
    return lstat(path.constData(), &status) == -1 && errno == ENOENT;
}

Finding evaluatePath(const QByteArray &path)
{
    // Without O_NONBLOCK, opening a pipe waits for a writer.
    const int descriptor = open(path.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor == -1) {
        const int reason = errno;
        return isAbsent(path) ? Finding{true, {}} : unusable(qt_error_string(reason));
    }

    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        return unusable(file.errorString());
    }
    return evaluateFile(file);
}

}

namespace Velmora {

AccessPolicy::AccessPolicy(QObject *parent)
    : AccessPolicy(QStringLiteral("/etc/velmora/access-policy.conf"), parent)
{
}

AccessPolicy::AccessPolicy(const QString &path, QObject *parent)
    : QObject(parent)
    , m_path(path)
{
}

bool AccessPolicy::applicationInstallationEnabled() const
{
    const Finding finding = evaluatePath(QFile::encodeName(m_path));
    if (!finding.problem.isEmpty()) {
        qWarning() << "Access policy" << m_path << "is unusable, installation is disabled:" << finding.problem;
    }
    return finding.enabled;
}

}
