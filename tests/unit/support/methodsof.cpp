// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "methodsof.h"

#include <QHash>
#include <QMetaMethod>

QStringList methodsOf(const QMetaObject &type)
{
    static const QHash<int, QString> kinds{{QMetaMethod::Signal, QStringLiteral("signal")},
                                           {QMetaMethod::Slot, QStringLiteral("slot")}};
    static const QHash<int, QString> accesses{{QMetaMethod::Private, QStringLiteral("private ")}};
    QStringList methods;
    for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
        const QMetaMethod method = type.method(i);
        QStringList parameters;
        for (int p = 0; p < method.parameterCount(); ++p) {
            const QByteArray name = method.parameterNames().at(p);
            parameters.append(QString::fromLatin1(method.parameterTypes().at(p) + ' ' + name));
        }
        methods.append(QStringLiteral("%1%2 %3(%4)")
                               .arg(accesses.value(method.access()), kinds.value(method.methodType()),
                                    QString::fromLatin1(method.name()), parameters.join(QLatin1String(", "))));
    }
    return methods;
}
