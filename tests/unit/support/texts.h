// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QHash>
#include <QString>
#include <QTranslator>

/** Texts by their translation id, known to qtTrId() for as long as the object lives. */
class Texts : public QTranslator
{
    Q_OBJECT

public:
    explicit Texts(const QHash<QString, QString> &texts);
    ~Texts() override;

    bool isEmpty() const override;
    QString translate(const char *context, const char *id, const char *disambiguation, int n) const override;

private:
    QHash<QString, QString> m_texts;
};
