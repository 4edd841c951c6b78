// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>

/** The package that the dialog shows, with the properties of the service's package reader. */
class PackageTexts : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name MEMBER name NOTIFY nameChanged)
    Q_PROPERTY(QString version MEMBER version NOTIFY versionChanged)
    Q_PROPERTY(QString summary MEMBER summary NOTIFY summaryChanged)
    Q_PROPERTY(QString fileName MEMBER fileName NOTIFY fileNameChanged)

public:
    /** A package for tests that do not care about it; never changed. */
    static PackageTexts *ordinary()
    {
        static PackageTexts texts;
        return &texts;
    }

    QString name = QStringLiteral("lighthouse-tides");
    QString version = QStringLiteral("2.4.1");
    QString summary = QStringLiteral("Tide tables and weather for small boats");
    QString fileName = QStringLiteral("/home/user/Downloads/lighthouse-tides-2.4.1-1.aarch64.rpm");

Q_SIGNALS:
    void nameChanged();
    void versionChanged();
    void summaryChanged();
    void fileNameChanged();
};
