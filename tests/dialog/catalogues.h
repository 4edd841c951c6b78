// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QLocale>
#include <QTranslator>

/** Loads the catalogues of a locale as the service does, the locale's own over the English, for the object's lifetime.
 */
class Catalogues
{
public:
    explicit Catalogues(const QLocale &locale = QLocale::c());
    ~Catalogues();

    /** Whether the locale has a catalogue of its own. */
    bool hasOwn() const { return m_hasOwn; }

private:
    Q_DISABLE_COPY_MOVE(Catalogues)

    QLocale m_before;
    QTranslator m_english;
    QTranslator m_own;
    bool m_hasOwn;
};
