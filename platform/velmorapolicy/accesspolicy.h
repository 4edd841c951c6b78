// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QString>

namespace Velmora {

/**
 * The policy by which the device's owner restricts its user.
 *
 * The policy is a key file in the syntax of desktop entries, UTF-8, at most 64 KiB:
 *
 *     [Applications]
 *     InstallationEnabled=false
 *
 * Everything is allowed unless the file says otherwise. A file that exists but can't be
 * understood forbids everything, so that nobody gains a right by damaging it.
 */
class AccessPolicy : public QObject
{
    Q_OBJECT

public:
    /** The device's policy, /etc/velmora/access-policy.conf. */
    explicit AccessPolicy(QObject *parent = nullptr);

    /** The policy in the file at path. */
    explicit AccessPolicy(const QString &path, QObject *parent = nullptr);

    /**
     * Whether the user may install applications; the file is read at each call.
     *
     * True for the value "true" and where the file or the key is absent, false for
     * "false". A file that can't be read, isn't a key file or holds any other value
     * gives false and one warning that names the file and the reason. It never blocks:
     * a pipe or a device in the file's place counts as unreadable.
     */
    bool applicationInstallationEnabled() const;

private:
    QString m_path;
};

}
