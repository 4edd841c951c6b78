// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "servicetexts.h"

#include "systempaths.h"

#include <QDir>
#include <QString>
#include <QTranslator>

#include <algorithm>

namespace {

// The text of an identifier in each language, and the identifier.
QStringList translations(const char *identifier)
{
    QStringList texts(QString::fromLatin1(identifier));
    const QDir folder(SystemPaths::Translations);
    const QStringList catalogues = folder.entryList({QStringLiteral("velmora-installationhandler*.qm")}, QDir::Files);
    for (const QString &catalogue : catalogues) {
        QTranslator translator;
        translator.load(catalogue, folder.path());
        texts << translator.translate("", identifier);
    }
    texts.removeAll(QString());
    return texts;
}

// The pattern may have %1 in the place of words that are not known.
bool fits(const QString &text, const QString &pattern)
{
    const int position = pattern.indexOf(QLatin1String("%1"));
    if (position < 0) {
        return text == pattern;
    }
    const QString begin = pattern.left(position);
    const QString end = pattern.mid(position + 2);
    return text.size() >= begin.size() + end.size() && text.startsWith(begin) && text.endsWith(end);
}

bool isTranslation(const QString &text, const char *identifier)
{
    const QStringList patterns = translations(identifier);
    return std::any_of(patterns.cbegin(), patterns.cend(),
                       [&text](const QString &pattern) { return fits(text, pattern); });
}

}

bool ServiceTexts::tellsDeclined(const QString &text)
{
    return isTranslation(text, "installationhandler-user-aborted");
}

bool ServiceTexts::tellsForbidden(const QString &text)
{
    return isTranslation(text, "installationhandler-application_installation_disallowed");
}
