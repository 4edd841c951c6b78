// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "transaction.h"

using namespace Package;

Transaction::Transaction() = default;

void Transaction::cancel()
{
    deleteLater();
    emit failure(QStringLiteral("cancelled"));
    emit finished();
}

bool Transaction::canCancel()
{
    return false;
}
