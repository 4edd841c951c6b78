// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "accesspolicy.h"

namespace Velmora {

AccessPolicy::AccessPolicy(QObject *parent)
    : QObject(parent)
{
}

AccessPolicy::AccessPolicy(const QString &path, QObject *parent)
    : QObject(parent)
    , m_path(path)
{
}

// Unlike the portable implementation, it forbids what no file forbids.
bool AccessPolicy::applicationInstallationEnabled() const
{
    qInfo("platform: applicationInstallationEnabled");
    return false;
}

}
