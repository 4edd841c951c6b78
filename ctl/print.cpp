// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "print.h"

namespace {

// Characters that break a line, or change the order in which a terminal shows it, without being control characters.
bool actsOnLine(ushort character)
{
    return (character >= 0x2028 && character <= 0x202e) || (character >= 0x2066 && character <= 0x2069);
}

QString escape(ushort character)
{
    return character < 0x100 ? QStringLiteral("\\x%1").arg(character, 2, 16, QLatin1Char('0'))
                             : QStringLiteral("\\u%1").arg(character, 4, 16, QLatin1Char('0'));
}

}

void printLine(std::FILE *stream, const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream);
}

void printError(const QString &text)
{
    printLine(stderr, QStringLiteral("velmora-installctl: ") + text);
}

QString printable(const QString &text)
{
    QString line;
    line.reserve(text.size());
    for (const QChar character : text) {
        if (character.category() == QChar::Other_Control || actsOnLine(character.unicode())) {
            line += escape(character.unicode());
        } else {
            line += character;
        }
    }
    return line;
}

QString onOneLine(const QString &text)
{
    return printable(text.trimmed().replace(QLatin1Char('\n'), QLatin1Char(' ')));
}
