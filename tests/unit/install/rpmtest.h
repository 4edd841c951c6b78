// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "rpmenvironment.h"

#include <QObject>
#include <QStringList>

/** What all tests of the reader have in common: after each test function no more files are open than before. */
class RpmTest : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

protected:
    /** librpm finds its database in here; it is an empty one. */
    RpmEnvironment m_environment;

private:
    QStringList m_openFiles;
};
