// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "accesspolicy.h"

#include "journal.h"
#include "messagelog.h"

#include <QObject>
#include <QTemporaryDir>

#include <memory>
#include <optional>

/** A policy file in a folder of its own, which doesn't exist at first. */
class AccessPolicyScene : public QObject
{
    Q_OBJECT

protected:
    void setUpScene();
    void tearDownScene();

    QString folder() const { return m_folder->path(); }
    QString path() const { return m_folder->filePath(QStringLiteral("access-policy.conf")); }
    void write(const QByteArray &contents) const;

    /** A file with the value for the one key that is known. */
    static QByteArray withValue(const QByteArray &value);

    /** The policy in the file gives an answer, without a word and without leaving a file open. */
    void verifyAnswer(const QString &path, bool enabled);

    /** The policy in the file refuses with one warning that tells the reason, and leaves no file open. */
    void verifyRefusal(const QString &path, const QString &reason);

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    Journal m_journal;
    std::optional<MessageLog> m_log;
};
