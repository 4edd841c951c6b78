// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QTemporaryDir>

/**
 * A HOME of its own for librpm, which finds its database and thereby its keys in there, as long as the object lives.
 */
class RpmEnvironment
{
public:
    RpmEnvironment();
    ~RpmEnvironment();
    RpmEnvironment(const RpmEnvironment &) = delete;
    RpmEnvironment &operator=(const RpmEnvironment &) = delete;

    /** Makes librpm use another database, a folder of this name in the HOME, from the next reading of its macros on. */
    bool useDatabase(const QString &name);

    /** Adds one of the public keys that the packages of the tests are signed with to the database in use. */
    bool importKey(const QString &file);

private:
    QTemporaryDir m_home;
    QByteArray m_previousHome;
};

/** The path of one of the packages of the tests, "plain" for plain.rpm. */
QString packageFile(const QString &name);
