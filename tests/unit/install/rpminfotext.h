// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "rpminfo.h"

#include "texts.h"

#include <QStringList>

/** All values of the last read, for example "valid signed: plain|1.2.3|A plain package|/tmp/a.rpm". */
inline QString described(const RpmInfo &info)
{
    return (info.isValid() ? "valid"_s : "invalid"_s) + (info.isSignatureValid() ? " signed: "_s : ": "_s)
            + QStringList{info.name(), info.version(), info.summary(), info.fileName()}.join(QLatin1Char('|'));
}
