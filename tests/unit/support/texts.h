// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QCoreApplication>
#include <QHash>
#include <QString>
#include <QTranslator>

/** Makes texts known to qtTrId() by their translation id for as long as the object lives. */
class Texts : public QTranslator
{
public:
    explicit Texts(const QHash<QString, QString> &texts)
        : m_texts(texts)
    {
        QCoreApplication::installTranslator(this);
    }

    ~Texts() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return m_texts.isEmpty(); }

    QString translate(const char *, const char *id, const char *, int) const override
    {
        return m_texts.value(QString::fromUtf8(id));
    }

private:
    QHash<QString, QString> m_texts;
};
