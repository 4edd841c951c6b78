// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "accesspolicyscene.h"

#include "devicetest.h"
#include "listeningsocket.h"
#include "nobody.h"

#include <QElapsedTimer>
#include <QFile>

#include <functional>

#include <sys/stat.h>
#include <unistd.h>

namespace {

using Make = std::function<int(const char *)>;

}

Q_DECLARE_METATYPE(Make)

/** All that can be in the file's place, or in its way. */
class AccessPolicyFileTest : public AccessPolicyScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUpScene(); }
    void cleanup() { tearDownScene(); }

    void refusesWhatIsNoFile_data();
    void refusesWhatIsNoFile();
    void refusesALinkThatLeadsNowhere();
    void refusesALinkInCircles();
    void refusesAFileInPlaceOfTheFolder();
    void refusesAFileWithoutPermission();
    void refusesAFolderWithoutPermission();
    void refusesAFileThatCannotBeRead();
    void refusesAHugeFileAtOnce();
    void followsALink();
};

void AccessPolicyFileTest::refusesWhatIsNoFile_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<QString>("reason");

    const QString noFile = QStringLiteral("not a regular file");
    QTest::newRow("folder") << Make([](const char *path) { return mkdir(path, 0755); }) << noFile;
    QTest::newRow("pipe") << Make([](const char *path) { return mkfifo(path, 0644); }) << noFile;
    QTest::newRow("device without end") << Make([](const char *path) { return symlink("/dev/zero", path); }) << noFile;
    QTest::newRow("socket") << Make([](const char *path) {
        const ListeningSocket socket(QFile::decodeName(path));
        return 0;
    }) << QStringLiteral("No such device or address");
}

void AccessPolicyFileTest::refusesWhatIsNoFile()
{
    QFETCH(Make, make);
    QFETCH(QString, reason);
    QCOMPARE(make(QFile::encodeName(path()).constData()), 0);

    QElapsedTimer timer;
    timer.start();
    verifyRefusal(path(), reason);
    QVERIFY2(timer.elapsed() < 5000, "Nobody ever writes to the pipe, and yet it was waited for");
}

void AccessPolicyFileTest::refusesALinkThatLeadsNowhere()
{
    QVERIFY(QFile::link(path() + QStringLiteral(".absent"), path()));
    verifyRefusal(path(), QStringLiteral("No such file or directory"));
}

void AccessPolicyFileTest::refusesALinkInCircles()
{
    QVERIFY(QFile::link(path(), path()));
    verifyRefusal(path(), QStringLiteral("Too many levels of symbolic links"));
}

void AccessPolicyFileTest::refusesAFileInPlaceOfTheFolder()
{
    write(withValue("true"));
    verifyRefusal(path() + QStringLiteral("/access-policy.conf"), QStringLiteral("Not a directory"));
}

void AccessPolicyFileTest::refusesAFileWithoutPermission()
{
    write(withValue("true"));
    QVERIFY(chmod(QFile::encodeName(path()).constData(), 0600) == 0);
    const Nobody nobody;
    verifyRefusal(path(), QStringLiteral("Permission denied"));
}

void AccessPolicyFileTest::refusesAFolderWithoutPermission()
{
    QVERIFY(chmod(QFile::encodeName(folder()).constData(), 0700) == 0);
    const Nobody nobody;
    verifyRefusal(path(), QStringLiteral("Permission denied"));
}

void AccessPolicyFileTest::refusesAFileThatCannotBeRead()
{
    // Opens for root too, and fails when it is read.
    verifyRefusal(QStringLiteral("/proc/self/mem"), QStringLiteral("Input/output error"));
}

void AccessPolicyFileTest::refusesAHugeFileAtOnce()
{
    write({});
    QVERIFY(truncate(QFile::encodeName(path()).constData(), qint64(1) << 40) == 0);
    verifyRefusal(path(), QStringLiteral("larger than 64 KiB"));
}

void AccessPolicyFileTest::followsALink()
{
    write(withValue("false"));
    const QString link = path() + QStringLiteral(".link");
    QVERIFY(QFile::link(path(), link));
    verifyAnswer(link, false);
}

int main(int argc, char **argv)
{
    return runOnDevice<AccessPolicyFileTest>(argc, argv);
}

#include "tst_accesspolicyfile.moc"
