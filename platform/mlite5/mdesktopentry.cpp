// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "mdesktopentry.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

#include <glib.h>

namespace {

// A launcher in every language there is stays far below it.
constexpr int sizeLimit = 4 * 1024 * 1024;

// Empty where there is nothing that an entry could be made of.
QByteArray readText(const QString &fileName)
{
    QFile file(fileName);
    // Opening a pipe would wait for its writer.
    if (!QFileInfo(fileName).isFile() || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray text = file.read(sizeLimit + 1);
    return text.size() > sizeLimit ? QByteArray() : text;
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

}

MDesktopEntry::MDesktopEntry(const QString &fileName)
    : m_keys(g_key_file_new())
{
    const QByteArray text = readText(fileName);
    if (!g_key_file_load_from_data(m_keys.get(), text.constData(), gsize(text.size()), G_KEY_FILE_NONE, nullptr)) {
        // What came before the fault is no entry either.
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
            g_key_file_get_string(m_keys.get(), name.group.constData(), name.key.constData(), nullptr), &g_free);
    return QString::fromUtf8(value.get());
}

void MDesktopEntry::Release::operator()(GKeyFile *keys) const
{
    g_key_file_unref(keys);
}
