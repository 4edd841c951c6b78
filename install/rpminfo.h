// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

/**
 * The header of one RPM package file, as far as this service needs it, readable
 * from QML. Filled by readPackage(), again and again if need be; the change
 * signals are never emitted, since the object is filled before it is published.
 */
class RpmInfo : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name NOTIFY nameChanged)
    Q_PROPERTY(QString version READ version NOTIFY versionChanged)
    Q_PROPERTY(QString summary READ summary NOTIFY summaryChanged)
    Q_PROPERTY(QString fileName READ fileName NOTIFY fileNameChanged)

public:
    RpmInfo();

    /**
     * Reads the header of the file at path, blocking; verifies the signature too
     * where the file has a header-and-payload signature, which reads all of it.
     * After a failed read isValid() is false and name, version and summary are
     * still those of the file before.
     */
    void readPackage(const QString &path);

    /** Whether the last read got through the header. */
    bool isValid() const;

    /** Whether the last file has a header-and-payload signature that verified. */
    bool isSignatureValid() const;

    QString name() const;
    QString version() const;
    QString summary() const;

    /** The path given to the last readPackage(). */
    QString fileName() const;

Q_SIGNALS:
    void nameChanged();
    void versionChanged();
    void summaryChanged();
    void fileNameChanged();

private:
    void keepValue(int tag, const QVariant &value);

    bool m_valid = false;
    bool m_signatureValid = false;
    QString m_errorString;
    QString m_name;
    QString m_version;
    QString m_summary;
    QString m_fileName;
};
