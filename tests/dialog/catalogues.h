// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

/** Loads the catalogues of a locale as the service does, the locale's own over the English, for the object's lifetime.
 */
class Catalogues
{
public:
    explicit Catalogues(const QLocale &locale = QLocale::c())
    {
        const QString folder = QStringLiteral("/usr/share/translations");
        const QString name = QStringLiteral("velmora-installationhandler");
        QLocale::setDefault(locale);
        if (!m_english.load(name + QLatin1String("_eng_en"), folder)) {
            qFatal("No engineering English");
        }
        QCoreApplication::installTranslator(&m_english);
        if (m_own.load(locale, name, QStringLiteral("-"), folder)) {
            QCoreApplication::installTranslator(&m_own);
        }
    }

    ~Catalogues() { QLocale::setDefault(m_before); }

    /** Whether the locale has a catalogue of its own. */
    bool hasOwn() const { return !m_own.isEmpty(); }

private:
    Q_DISABLE_COPY_MOVE(Catalogues)

    QLocale m_before;
    QTranslator m_english;
    QTranslator m_own;
};
