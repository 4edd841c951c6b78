// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "catalogues.h"

#include <QCoreApplication>

Catalogues::Catalogues(const QLocale &locale)
{
    const QString folder = QStringLiteral("/usr/share/translations");
    const QString name = QStringLiteral("velmora-installationhandler");
    QLocale::setDefault(locale);
    if (!m_english.load(name + QLatin1String("_eng_en"), folder)) {
        qFatal("No engineering English");
    }
    QCoreApplication::installTranslator(&m_english);
    m_hasOwn = m_own.load(locale, name, QStringLiteral("-"), folder);
    if (m_hasOwn) {
        QCoreApplication::installTranslator(&m_own);
    }
}

Catalogues::~Catalogues()
{
    QLocale::setDefault(m_before);
}
