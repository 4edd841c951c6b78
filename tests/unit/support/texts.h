// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QHash>
#include <QMetaMethod>
#include <QString>
#include <QStringList>
#include <QTranslator>

/** A text, given in UTF-8: "text"_s. */
inline QString operator""_s(const char *text, std::size_t size)
{
    return QString::fromUtf8(text, static_cast<int>(size));
}

/** Bytes: "bytes"_b. */
inline QByteArray operator""_b(const char *bytes, std::size_t size)
{
    return {bytes, static_cast<int>(size)};
}

/** The methods that a class declares, in their order, for example "private slot stop(int status)". */
inline QStringList methodsOf(const QMetaObject &type)
{
    const QHash<int, QString> kinds{{QMetaMethod::Signal, "signal"_s}, {QMetaMethod::Slot, "slot"_s}};
    QStringList methods;
    for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
        const QMetaMethod method = type.method(i);
        QStringList parameters;
        for (int p = 0; p < method.parameterCount(); ++p) {
            const QByteArray name = method.parameterNames().at(p);
            parameters.append(QString::fromLatin1(method.parameterTypes().at(p) + ' ' + name));
        }
        const QString access = method.access() == QMetaMethod::Private ? "private "_s : QString();
        methods.append("%1%2 %3(%4)"_s.arg(access, kinds.value(method.methodType()), QString::fromLatin1(method.name()),
                                           parameters.join(", "_s)));
    }
    return methods;
}

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
