// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QLocale>
#include <QTranslator>

/** The program speaks a locale's language while the object lives, as the service does: its own over the English. */
class Catalogues
{
public:
    explicit Catalogues(const QLocale &locale = QLocale::c());
    ~Catalogues();

    /** Whether there is a catalogue of the locale's own. */
    bool hasOwn() const { return m_hasOwn; }

private:
    Q_DISABLE_COPY_MOVE(Catalogues)

    QLocale m_before;
    QTranslator m_english;
    QTranslator m_own;
    bool m_hasOwn;
};
