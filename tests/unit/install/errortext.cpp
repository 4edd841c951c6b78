// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "errortext.h"

#include <QDir>
#include <QFile>

#include <array>
#include <clocale>
#include <cstring>

#include <libintl.h>

namespace {

constexpr char domain[] = "libc";
constexpr char language[] = "xx";

void append(QByteArray *bytes, quint32 number)
{
    bytes->append(reinterpret_cast<const char *>(&number), sizeof number);
}

/** A message catalogue in gettext's binary form: a head, two tables of lengths and offsets, then the strings. */
QByteArray catalogue(const QByteArray &original, const QByteArray &translation)
{
    const std::array<QByteArray, 4> strings{QByteArray(""), original,
                                            QByteArray("Content-Type: text/plain; charset=UTF-8\n"), translation};
    constexpr quint32 headSize = 7 * 4;
    constexpr quint32 tableSize = 2 * 8;
    constexpr quint32 end = headSize + 2 * tableSize;

    QByteArray bytes;
    for (const quint32 number : {0x950412deU, 0U, 2U, headSize, headSize + tableSize, 0U, end}) {
        append(&bytes, number);
    }
    QByteArray texts;
    for (const QByteArray &string : strings) {
        append(&bytes, static_cast<quint32>(string.size()));
        append(&bytes, end + static_cast<quint32>(texts.size()));
        texts += string + '\0';
    }
    return bytes + texts;
}

}

ErrorText::ErrorText(int error, const QByteArray &text)
    : m_previousFolder(bindtextdomain(domain, nullptr))
    , m_previousLocale(std::setlocale(LC_ALL, nullptr))
{
    const QByteArray bytes = catalogue(std::strerror(error), text);
    const QString folder = m_catalogues.filePath(QLatin1String(language) + QLatin1String("/LC_MESSAGES"));
    QFile file(folder + QLatin1String("/libc.mo"));
    if (!QDir().mkpath(folder) || !file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("no catalogue of error texts");
    }
    qputenv("LANGUAGE", language);
    std::setlocale(LC_ALL, "C.UTF-8");
    bindtextdomain(domain, QFile::encodeName(m_catalogues.path()).constData());
}

ErrorText::~ErrorText()
{
    qunsetenv("LANGUAGE");
    std::setlocale(LC_ALL, m_previousLocale.constData());
    bindtextdomain(domain, m_previousFolder.constData());
}
