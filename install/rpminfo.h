// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

/**
 * The header values that this service needs of the RPM package file that was read
 * last, readable from QML. The change signals are never emitted, since the object is filled before it is published.
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
     * Reads the header of the file at path, and blocks meanwhile. If the file has a
     * header-and-payload signature, the signature is verified, which reads the whole
     * file. After a failed read isValid() is false, and name, version and summary
     * are those of the previous file (Known behaviour 44).
     */
    void readPackage(const QString &path);

    /** Whether the last read has read the whole header. */
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
    void keepValue(quint32 tag, const QVariant &value);

    bool m_valid = false;
    bool m_signatureValid = false;
    QString m_errorString;
    QString m_name;
    QString m_version;
    QString m_summary;
    QString m_fileName;
};
