// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QTranslator>

/** The texts of the program in the user's language, as long as this object lives. */
class Texts
{
public:
    Texts();

private:
    QTranslator m_engineeringEnglish;
    QTranslator m_locale;
};
