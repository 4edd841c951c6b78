// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "accesspolicy.h"

#include "devicefile.h"
#include "journal.h"
#include "processstate.h"
#include "specialfiles.h"
#include "testrunner.h"

#include <QTemporaryDir>

#include <functional>
#include <optional>

#include <sys/stat.h>
#include <unistd.h>

using Velmora::AccessPolicy;

namespace {

using Make = std::function<bool(const char *path)>;

// The policy's answers by a usable file. Any other outcome is the reason why a file is unusable.
const QString Allowed;
const QString Forbidden = "forbidden"_s;

QByteArray withValue(const QByteArray &value)
{
    return "[Applications]\nInstallationEnabled=" + value + "\n";
}

QByteArray ofSize(int size)
{
    const QByteArray end = "\n" + withValue("true");
    return "#" + QByteArray(size - end.size() - 1, 'x') + end;
}

}

Q_DECLARE_METATYPE(Make)

/** Policy files, good, bad and absent, in a folder that each test has for itself. */
class AccessPolicyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder.emplace();
        QVERIFY(chmod(QFile::encodeName(m_folder->path()).constData(), 0755) == 0);
    }

    void allowsWhereTheFileIsAbsent()
    {
        check(path(), Allowed);
        check(path("a/folder/that/is/absent"_s), Allowed);
    }

    void judgesTheContents_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<QString>("outcome");
        const auto row = [](const char *name, const QByteArray &contents, const QString &outcome) {
            QTest::newRow(name) << contents << outcome;
        };

        row("true", withValue("true"), Allowed);
        row("false", withValue("false"), Forbidden);
        row("blanks around true", withValue("  true \t "), Allowed);
        row("blanks around false", withValue("  false \t "), Forbidden);
        row("blanks around the key", "[Applications]\n  InstallationEnabled  =false", Forbidden);
        row("no line feed at the end", "[Applications]\nInstallationEnabled=false", Forbidden);
        row("carriage returns", "[Applications]\r\nInstallationEnabled=false\r\n", Forbidden);
        row("empty file", "", Allowed);
        row("blank lines and comments", "\n# a comment\n\n", Allowed);
        row("no key", "[Applications]\n", Allowed);
        row("another key", "[Applications]\nRemovalEnabled=false\n", Allowed);
        row("key in small letters", "[Applications]\ninstallationenabled=false\n", Allowed);
        row("key of a language", "[Applications]\nInstallationEnabled[de]=false\n", Allowed);
        row("key in a comment", "[Applications]\n#InstallationEnabled=false\n", Allowed);
        row("another group", "[Browser]\nInstallationEnabled=false\n", Allowed);
        row("group among others", "[Browser]\nInstallationEnabled=true\n" + withValue("false") + "[Mail]\n", Forbidden);
        row("twice, the last counts", withValue("true") + "InstallationEnabled=false\n", Forbidden);
        row("group twice, the last counts", withValue("true") + withValue("false"), Forbidden);
        row("text of another script", "# käyttöoikeudet €\n" + withValue("true"), Allowed);
        row("largest file", ofSize(65536), Allowed);
        row("too large", ofSize(65537), "larger than 64 KiB"_s);

        const QString noBoolean = "InstallationEnabled is neither true nor false"_s;
        for (const char *value : {"1", "0", "yes", "no", "True", "TRUE", "FALSE", "", "tru", "truee", "true false",
                                  "true;", "\\\"true\\\"", "true # comment", "null", "\xd1\x82true"}) {
            row(qPrintable("value '%1'"_s.arg(QString::fromUtf8(value))), withValue(value), noBoolean);
        }
        row("last value is no boolean", withValue("true") + "InstallationEnabled=maybe\n", noBoolean);

        const QString noText = "not UTF-8 text"_s;
        row("zeros, as after a crash", QByteArray(4096, '\0'), noText);
        row("one zero", QByteArray(1, '\0'), noText);
        row("zero after the value", withValue(QByteArray("true\0", 5)), noText);
        row("zeros before the policy", QByteArray(16, '\0') + "\n" + withValue("true"), noText);
        row("program", QByteArray("\177ELF\2\1\1\0\0\0", 10), noText);
        row("Latin-1", "# k\xe4ytt\xf6oikeudet\n" + withValue("true"), noText);
        row("UTF-16", QByteArray("\xff\xfe[\0A\0p\0", 8), noText);

        // GLib tells why a file is malformed.
        const QString noLine = "Key file contains line “%1” which is not a key-value pair, group, or comment"_s;
        row("no group", "InstallationEnabled=true\n", "Key file does not start with a group"_s);
        row("no key file", "installation is enabled\n", noLine.arg("installation is enabled"_s));
        row("group without end", "[Applications\nInstallationEnabled=true\n", noLine.arg("[Applications"_s));
        row("key without value", withValue("true") + "InstallationEnabled\n", noLine.arg("InstallationEnabled"_s));
    }

    void judgesTheContents()
    {
        QFETCH(QByteArray, contents);
        QFETCH(QString, outcome);
        write(contents);
        check(path(), outcome);
    }

    void refusesAllButRegularFiles_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char *name, const Make &make, const char *reason) {
            QTest::newRow(name) << make << reason;
        };
        row("folder", [](const char *path) { return mkdir(path, 0755) == 0; }, "not a regular file");
        row("pipe", [](const char *path) { return mkfifo(path, 0644) == 0; }, "not a regular file");
        row("endless", [](const char *path) { return symlink("/dev/zero", path) == 0; }, "not a regular file");
        row(
                "link to nothing", [](const char *path) { return symlink("absent", path) == 0; },
                "No such file or directory");
        row(
                "link to itself", [](const char *path) { return symlink(path, path) == 0; },
                "Too many levels of symbolic links");
        const auto listen = [](const char *path) {
            const ListeningSocket socket(QFile::decodeName(path));
            return true;
        };
        row("socket", listen, "No such device or address");
    }

    void refusesAllButRegularFiles()
    {
        QFETCH(Make, make);
        QFETCH(QString, reason);
        QVERIFY(make(encodedPath().constData()));
        check(path(), reason);
    }

    void refusesAFileThatMayNotBeOpened()
    {
        write(withValue("true"));
        QVERIFY(chmod(encodedPath().constData(), 0600) == 0);
        {
            const Nobody nobody;
            check(path(), "Permission denied"_s);
        }
        QVERIFY(chmod(encodedPath().constData(), 0644) == 0);
        QVERIFY(chmod(QFile::encodeName(m_folder->path()).constData(), 0700) == 0);
        const Nobody nobody;
        check(path(), "Permission denied"_s);
    }

    void refusesAFileThatCannotBeRead()
    {
        write(withValue("true"));
        check(path() + "/access-policy.conf"_s, "Not a directory"_s);
        // This file can be opened by root, and fails when it is read.
        check("/proc/self/mem"_s, "Input/output error"_s);
    }

    void refusesAHugeFileAtOnce()
    {
        write({});
        QVERIFY(truncate(encodedPath().constData(), qint64(1) << 40) == 0);
        check(path(), "larger than 64 KiB"_s);
    }

    void followsALink()
    {
        write(withValue("false"));
        QVERIFY(QFile::link(path(), path("link"_s)));
        check(path("link"_s), Forbidden);
    }

    void readsTheFileAtEachQuestion()
    {
        const AccessPolicy policy(path());
        QVERIFY(policy.applicationInstallationEnabled());
        write(withValue("false"));
        QVERIFY(!policy.applicationInstallationEnabled());
        write(withValue("true"));
        QVERIFY(policy.applicationInstallationEnabled());
    }

    void asksTheDeviceByDefault()
    {
        QVERIFY(AccessPolicy().applicationInstallationEnabled());
        const DeviceFile file("/etc/velmora/access-policy.conf"_s, withValue("false"));
        QVERIFY(!AccessPolicy().applicationInstallationEnabled());
    }

    void belongsToItsParent()
    {
        QObject parent;
        QCOMPARE((new AccessPolicy(&parent))->parent(), &parent);
        QCOMPARE((new AccessPolicy(path(), &parent))->parent(), &parent);
    }

private:
    QString path(const QString &name = "access-policy.conf"_s) const { return m_folder->filePath(name); }
    QByteArray encodedPath() const { return QFile::encodeName(path()); }
    void write(const QByteArray &contents) const
    {
        QFile file(path());
        QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(file.errorString()));
        QCOMPARE(file.write(contents), qint64(contents.size()));
    }

    /** Asks the policy once. Checks the answer, the log, and that no file is left open. */
    static void check(const QString &path, const QString &outcome)
    {
        Journal journal;
        const MessageLog log(&journal);
        const QStringList openBefore = openFiles();
        const Deadline deadline;
        QCOMPARE(AccessPolicy(path).applicationInstallationEnabled(), outcome == Allowed);
        QVERIFY2(!deadline.hasPassed(), "The policy waited for the file");
        QCOMPARE(openFiles(), openBefore);

        const QString warning = "warning: Access policy \"%1\" is unusable, installation is disabled: \"%2\""_s;
        const bool usable = outcome == Allowed || outcome == Forbidden;
        QCOMPARE(journal.entries(), usable ? QStringList() : QStringList(warning.arg(path, outcome)));
    }

    std::optional<QTemporaryDir> m_folder;
};

VELMORA_TEST(AccessPolicyTest, Device, Core)

#include "tst_accesspolicy.moc"
