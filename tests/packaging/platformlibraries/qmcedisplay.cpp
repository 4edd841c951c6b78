// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "qmcedisplay.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

QMceDisplay::QMceDisplay(QObject *parent)
    : QObject(parent)
{
    qInfo("platform: QMceDisplay");
}

QMceDisplay::~QMceDisplay() = default;

QMceDisplay::State QMceDisplay::state() const
{
    return m_state;
}

// The header has these for the portable implementation.
void QMceDisplay::handleStatusSignal(const QDBusMessage &) {}
void QMceDisplay::handleOwnerChanged(const QString &, const QString &, const QString &) {}
void QMceDisplay::handleAnswer(QDBusPendingCallWatcher *) {}
