// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QTemporaryDir>

/** A HOME of its own for librpm while the object lives. librpm finds its database there, and in it the keys. */
class RpmEnvironment
{
public:
    RpmEnvironment();
    ~RpmEnvironment();
    RpmEnvironment(const RpmEnvironment &) = delete;
    RpmEnvironment &operator=(const RpmEnvironment &) = delete;

    /** Makes librpm use the database in a folder of the HOME, from the next reading of its macros on. */
    bool useDatabase(const QString &name);

    /** Adds a public key, with which packages of the tests are signed, to the database in use. */
    bool importKey(const QString &file);

private:
    QTemporaryDir m_home;
    QByteArray m_previousHome;
};

/** The path of one of the packages of the tests, "plain" for plain.rpm. */
QString packageFile(const QString &name);
