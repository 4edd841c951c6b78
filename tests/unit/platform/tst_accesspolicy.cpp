// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "accesspolicyscene.h"

#include "devicefile.h"
#include "devicetest.h"

using Velmora::AccessPolicy;

/** What a policy file can say, and what the policy makes of it. */
class AccessPolicyTest : public AccessPolicyScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUpScene(); }
    void cleanup() { tearDownScene(); }

    void allowsWhereTheFileIsAbsent();
    void understands_data();
    void understands();
    void refusesContents_data();
    void refusesContents();
    void readsTheFileAtEachQuestion();
    void asksTheDeviceByDefault();
    void belongsToItsParent();

private:
    static QByteArray ofSize(int size);
};

void AccessPolicyTest::allowsWhereTheFileIsAbsent()
{
    verifyAnswer(path(), true);
    verifyAnswer(path() + QStringLiteral("/of/a/folder/that/is/absent"), true);
}

QByteArray AccessPolicyTest::ofSize(int size)
{
    const QByteArray end = "\n" + withValue("true");
    return "#" + QByteArray(size - end.size() - 1, 'x') + end;
}

void AccessPolicyTest::understands_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<bool>("enabled");

    QTest::newRow("true") << withValue("true") << true;
    QTest::newRow("false") << withValue("false") << false;
    QTest::newRow("blanks around true") << withValue("  true \t ") << true;
    QTest::newRow("blanks around false") << withValue("  false \t ") << false;
    QTest::newRow("blanks around the key") << QByteArray("[Applications]\n  InstallationEnabled  =false") << false;
    QTest::newRow("no line feed at the end") << QByteArray("[Applications]\nInstallationEnabled=false") << false;
    QTest::newRow("carriage returns") << QByteArray("[Applications]\r\nInstallationEnabled=false\r\n") << false;
    QTest::newRow("empty file") << QByteArray() << true;
    QTest::newRow("blank lines and comments") << QByteArray("\n# a comment\n\n") << true;
    QTest::newRow("no key") << QByteArray("[Applications]\n") << true;
    QTest::newRow("another key") << QByteArray("[Applications]\nRemovalEnabled=false\n") << true;
    QTest::newRow("key in small letters") << QByteArray("[Applications]\ninstallationenabled=false\n") << true;
    QTest::newRow("key of a language") << QByteArray("[Applications]\nInstallationEnabled[de]=false\n") << true;
    QTest::newRow("key in a comment") << QByteArray("[Applications]\n#InstallationEnabled=false\n") << true;
    QTest::newRow("another group") << QByteArray("[Browser]\nInstallationEnabled=false\n") << true;
    QTest::newRow("group among others") << QByteArray(
            "[Browser]\nInstallationEnabled=true\n[Applications]\nInstallationEnabled=false\n[Mail]\n")
                                        << false;
    QTest::newRow("twice, the last counts")
            << QByteArray("[Applications]\nInstallationEnabled=true\nInstallationEnabled=false\n") << false;
    QTest::newRow("group twice, the last counts") << withValue("true") + withValue("false") << false;
    QTest::newRow("text of another script")
            << QByteArray("# käyttöoikeudet \xe2\x82\xac\n") + withValue("true") << true;
    QTest::newRow("largest file") << ofSize(65536) << true;
}

void AccessPolicyTest::understands()
{
    QFETCH(QByteArray, contents);
    QFETCH(bool, enabled);
    write(contents);
    verifyAnswer(path(), enabled);
}

void AccessPolicyTest::refusesContents_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("reason");

    const QString noBoolean = QStringLiteral("InstallationEnabled is neither true nor false");
    const QList<QByteArray> values{
            "1",   "0",     "yes",        "no",    "True",         "TRUE",           "FALSE", "",
            "tru", "truee", "true false", "true;", "\\\"true\\\"", "true # comment", "null",  "\xd1\x82true"};
    for (const QByteArray &value : values) {
        QTest::newRow(("value '" + value + "'").constData()) << withValue(value) << noBoolean;
    }
    QTest::newRow("last value is no boolean")
            << withValue("true") + QByteArray("InstallationEnabled=maybe\n") << noBoolean;

    const QString noText = QStringLiteral("not UTF-8 text");
    QTest::newRow("zeros, as after a crash") << QByteArray(4096, '\0') << noText;
    QTest::newRow("one zero") << QByteArray(1, '\0') << noText;
    QTest::newRow("zero after the value") << withValue(QByteArray("true\0", 5)) << noText;
    QTest::newRow("zeros before the policy") << QByteArray(16, '\0') + "\n" + withValue("true") << noText;
    QTest::newRow("program") << QByteArray("\177ELF\2\1\1\0\0\0", 10) << noText;
    QTest::newRow("Latin-1") << QByteArray("# k\xe4ytt\xf6oikeudet\n") + withValue("true") << noText;
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe[\0A\0p\0", 8) << noText;

    // What is wrong with a malformed file is told in GLib's words.
    QTest::newRow("no group") << QByteArray("InstallationEnabled=true\n")
                              << QStringLiteral("Key file does not start with a group");
    QTest::newRow("no key file")
            << QByteArray("installation is enabled\n")
            << QStringLiteral(
                       "Key file contains line “installation is enabled” which is not a key-value pair, group, or "
                       "comment");
    QTest::newRow("group without end")
            << QByteArray("[Applications\nInstallationEnabled=true\n")
            << QStringLiteral(
                       "Key file contains line “[Applications” which is not a key-value pair, group, or comment");
    QTest::newRow("key without value")
            << withValue("true") + QByteArray("InstallationEnabled\n")
            << QStringLiteral("Key file contains line “InstallationEnabled” which is not a key-value pair, group, or "
                              "comment");
    QTest::newRow("too large") << ofSize(65537) << QStringLiteral("larger than 64 KiB");
}

void AccessPolicyTest::refusesContents()
{
    QFETCH(QByteArray, contents);
    QFETCH(QString, reason);
    write(contents);
    verifyRefusal(path(), reason);
}

void AccessPolicyTest::readsTheFileAtEachQuestion()
{
    const AccessPolicy policy(path());
    QVERIFY(policy.applicationInstallationEnabled());
    write(withValue("false"));
    QVERIFY(!policy.applicationInstallationEnabled());
    write(withValue("true"));
    QVERIFY(policy.applicationInstallationEnabled());
}

void AccessPolicyTest::asksTheDeviceByDefault()
{
    QVERIFY(AccessPolicy().applicationInstallationEnabled());
    const DeviceFile file(QStringLiteral("/etc/velmora/access-policy.conf"), withValue("false"));
    QVERIFY(!AccessPolicy().applicationInstallationEnabled());
}

void AccessPolicyTest::belongsToItsParent()
{
    QObject parent;
    const auto *child = new AccessPolicy(&parent);
    QCOMPARE(child->parent(), &parent);
    const auto *sibling = new AccessPolicy(path(), &parent);
    QCOMPARE(sibling->parent(), &parent);
}

int main(int argc, char **argv)
{
    return runOnDevice<AccessPolicyTest>(argc, argv);
}

#include "tst_accesspolicy.moc"
