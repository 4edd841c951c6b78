// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "mdesktopentry.h"

#include <QByteArray>
#include <QFile>
#include <QHash>

#include <glib.h>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

// Far more than a launcher needs, even with translations into all languages.
constexpr int SizeLimit = 4 * 1024 * 1024;

// A name with a zero byte is refused, because the system would read only the part before it.
int openWithoutWaiting(const QString &fileName)
{
    if (fileName.contains(QChar::Null)) {
        return -1;
    }
    // Without O_NONBLOCK, opening a pipe waits for a writer.
    return open(QFile::encodeName(fileName).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
}

bool isRegularFile(const QFile &file)
{
    struct stat status;
    return fstat(file.handle(), &status) == 0 && S_ISREG(status.st_mode);
}

// Returns an empty text for a file that can't be read, isn't a regular one or is too large.
QByteArray readText(const QString &fileName)
{
    const int descriptor = openWithoutWaiting(fileName);
    QFile file;
    if (descriptor == -1 || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)
        || !isRegularFile(file)) {
        return {};
    }
    const QByteArray text = file.read(SizeLimit + 1);
    return text.size() > SizeLimit ? QByteArray() : text;
}

struct KeyName
{
    explicit KeyName(const QString &name)
        : group(name.section(QLatin1Char('/'), 0, -2).toUtf8())
        , key(name.section(QLatin1Char('/'), -1).toUtf8())
    {
    }

    const QByteArray group;
    const QByteArray key;
};

// GLib's own way with an unknown escape sequence depends on its version. Here it stays as it is, so that a path with a
// single backslash still is one.
QString withoutEscapes(const QString &text)
{
    static const QHash<QChar, QChar> escapes{{u's', u' '}, {u'n', u'\n'}, {u't', u'\t'}, {u'r', u'\r'}, {u'\\', u'\\'}};
    QString result;
    result.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == u'\\' && i + 1 < text.size() && escapes.contains(text[i + 1]);
        result += isEscape ? escapes[text[++i]] : text[i];
    }
    return result;
}

}

MDesktopEntry::MDesktopEntry(const QString &fileName)
    : m_keys(g_key_file_new())
{
    const QByteArray text = readText(fileName);
    if (!g_key_file_load_from_data(m_keys.get(), text.constData(), gsize(text.size()), G_KEY_FILE_NONE, nullptr)) {
        // GLib keeps the keys before a fault, but a damaged file counts as one without keys.
        m_keys.reset(g_key_file_new());
    }
}

bool MDesktopEntry::contains(const QString &key) const
{
    const KeyName name(key);
    return g_key_file_has_key(m_keys.get(), name.group.constData(), name.key.constData(), nullptr);
}

QString MDesktopEntry::value(const QString &key) const
{
    const KeyName name(key);
    const std::unique_ptr<char, decltype(&g_free)> value(
            g_key_file_get_value(m_keys.get(), name.group.constData(), name.key.constData(), nullptr), &g_free);
    if (!value || !g_utf8_validate(value.get(), -1, nullptr)) {
        return {};
    }
    return withoutEscapes(QString::fromUtf8(value.get()));
}

void MDesktopEntry::Release::operator()(GKeyFile *keys) const
{
    g_key_file_unref(keys);
}
