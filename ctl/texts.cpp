// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "texts.h"

#include "systempaths.h"

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>

namespace {

// QTranslator takes a user's second language where American English, which has no catalogue of that kind, is the first.
void loadFirst(QTranslator *translator, const QString &name)
{
    const QStringList languages = QLocale().uiLanguages();
    for (QString language : languages) {
        language.replace(QLatin1Char('-'), QLatin1Char('_'));
        if (translator->load(name + QLatin1Char('-') + language, SystemPaths::Translations)
            || QLocale(language).language() == QLocale::English) {
            return;
        }
    }
}

}

// Qt asks the translator that was installed last first. A missing catalogue is no error.
Texts::Texts()
{
    const QString name = QStringLiteral("velmora-installctl");
    m_engineeringEnglish.load(name + QStringLiteral("_eng_en"), SystemPaths::Translations);
    QCoreApplication::installTranslator(&m_engineeringEnglish);
    loadFirst(&m_locale, name);
    QCoreApplication::installTranslator(&m_locale);
}
