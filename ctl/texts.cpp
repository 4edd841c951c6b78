// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "texts.h"

#include "systempaths.h"

#include <QCoreApplication>
#include <QLocale>

// Qt asks the translator that was installed last first. A missing catalogue is no error.
Texts::Texts()
{
    const QString name = QStringLiteral("velmora-installctl");
    m_engineeringEnglish.load(name + QStringLiteral("_eng_en"), SystemPaths::Translations);
    QCoreApplication::installTranslator(&m_engineeringEnglish);
    m_locale.load(QLocale(), name, QStringLiteral("-"), SystemPaths::Translations);
    QCoreApplication::installTranslator(&m_locale);
}
