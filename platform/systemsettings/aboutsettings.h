// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QString>

/**
 * Names the operating system to its user.
 */
class AboutSettings : public QObject
{
    Q_OBJECT

public:
    explicit AboutSettings(QObject *parent = nullptr);

    /**
     * The operating system's name for people, without its version.
     *
     * This is NAME of /etc/os-release, read at each call, or the kernel's name if that
     * file has none.
     */
    QString baseOperatingSystemName() const;
};
