// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "callerror.h"

#include "results.h"

#include <QDBusError>
#include <QDBusMessage>

namespace {

bool isUnknownInterface(QDBusError::ErrorType type)
{
    switch (type) {
    case QDBusError::UnknownMethod:
    case QDBusError::UnknownObject:
    case QDBusError::UnknownInterface:
    case QDBusError::InvalidArgs:
    case QDBusError::InvalidSignature:
        return true;
    default:
        return false;
    }
}

// The bus itself answers for a service that is not there.
bool isFromBus(const QDBusMessage &error)
{
    return error.service() == QLatin1String("org.freedesktop.DBus");
}

}

Result readCallError(const QDBusMessage &error)
{
    const QDBusError::ErrorType type = QDBusError(error).type();
    const QString text = error.errorMessage().isEmpty() ? error.errorName() : error.errorMessage();
    switch (type) {
    case QDBusError::AccessDenied:
        return Results::unprivileged(text);
    case QDBusError::Disconnected:
        return Results::busLost();
    case QDBusError::LimitsExceeded:
        return Results::failed(text);
    default:
        return isFromBus(error) || isUnknownInterface(type) ? Results::unavailable(text) : Results::failed(text);
    }
}
