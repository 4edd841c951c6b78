// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "accesspolicyscene.h"

#include <QDir>
#include <QTest>

#include <sys/stat.h>

using Velmora::AccessPolicy;

namespace {

int openFiles()
{
    return QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size();
}

}

void AccessPolicyScene::setUpScene()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    QVERIFY(chmod(QFile::encodeName(folder()).constData(), 0755) == 0);
    m_log.emplace(&m_journal);
}

void AccessPolicyScene::tearDownScene()
{
    m_log.reset();
    m_journal.clear();
    m_folder.reset();
}

void AccessPolicyScene::write(const QByteArray &contents) const
{
    QFile file(path());
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(file.errorString()));
    QCOMPARE(file.write(contents), qint64(contents.size()));
}

QByteArray AccessPolicyScene::withValue(const QByteArray &value)
{
    return "[Applications]\nInstallationEnabled=" + value + "\n";
}

void AccessPolicyScene::verifyAnswer(const QString &path, bool enabled)
{
    const int openBefore = openFiles();
    QCOMPARE(AccessPolicy(path).applicationInstallationEnabled(), enabled);
    QCOMPARE(m_journal.entries(), QStringList());
    QCOMPARE(openFiles(), openBefore);
}

void AccessPolicyScene::verifyRefusal(const QString &path, const QString &reason)
{
    const int openBefore = openFiles();
    QVERIFY(!AccessPolicy(path).applicationInstallationEnabled());
    const QString warning =
            QStringLiteral("warning: Access policy \"%1\" is unusable, installation is disabled: \"%2\"");
    QCOMPARE(m_journal.entries(), QStringList(warning.arg(path, reason)));
    QCOMPARE(openFiles(), openBefore);
}
