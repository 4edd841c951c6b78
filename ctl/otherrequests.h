// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusMessage>
#include <QObject>

class Service;

/** Knows the requests of other programs since the service was last started. */
class OtherRequests : public QObject
{
    Q_OBJECT

public:
    explicit OtherRequests(const Service *service, QObject *parent = nullptr);

    /** Sees a call of another program. */
    void take(const QDBusMessage &call);
    /** There are requests of all kinds, as far as can be known. */
    void assumeAll();

    /** Whether there was any installation. */
    bool hasInstallation() const { return m_hasInstallation; }
    /** Whether there was an installation that the user need not confirm. */
    bool hasSilentInstallation() const { return m_hasSilentInstallation; }
    /** Whether there was anything that ends in a report of a removal. */
    bool hasRemoval() const { return m_hasRemoval; }

private:
    void forget();

    bool m_hasInstallation = false;
    bool m_hasSilentInstallation = false;
    bool m_hasRemoval = false;
};
