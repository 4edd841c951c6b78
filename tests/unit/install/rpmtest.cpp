// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "rpmtest.h"

#include "processstate.h"
#include "rpminfo.h"

#include <QtTest>

void RpmTest::initTestCase()
{
    QVERIFY(m_environment.useDatabase(QStringLiteral("empty")));
    // What librpm opens once and for all.
    RpmInfo info;
    info.readPackage(packageFile(QStringLiteral("plain")));
    QVERIFY(info.isValid());
}

void RpmTest::init()
{
    m_openFiles = openFiles();
}

void RpmTest::cleanup()
{
    QCOMPARE(openFiles(), m_openFiles);
}
