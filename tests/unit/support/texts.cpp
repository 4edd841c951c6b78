// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "texts.h"

#include <QCoreApplication>

Texts::Texts(const QHash<QString, QString> &texts)
    : m_texts(texts)
{
    QCoreApplication::installTranslator(this);
}

Texts::~Texts()
{
    QCoreApplication::removeTranslator(this);
}

bool Texts::isEmpty() const
{
    return m_texts.isEmpty();
}

QString Texts::translate(const char *, const char *id, const char *, int) const
{
    return m_texts.value(QString::fromUtf8(id));
}
