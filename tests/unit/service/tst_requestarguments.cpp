// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "devicefile.h"
#include "handlerfixture.h"
#include "testrunner.h"

namespace {

const QString Plain = "plain"_s;
const QString Idle = "idle"_s;
const QString EmulatorMarker = "/etc/velmoraos-emulator"_s;

}

/** The arguments of an installation request, as the transaction uses them. */
class RequestArgumentsTest : public HandlerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void convertsToLocalFiles_data()
    {
        QTest::addColumn<QString>("fileUrl");
        QTest::addColumn<QString>("path");
        QTest::newRow("path") << "/tmp/a.rpm"_s << "/tmp/a.rpm"_s;
        QTest::newRow("URL") << "file:///tmp/a.rpm"_s << "/tmp/a.rpm"_s;
        QTest::newRow("URL, encoded") << "file:///tmp/a%20b%C3%A4.rpm"_s << "/tmp/a bä.rpm"_s;
        QTest::newRow("path that looks encoded") << "/tmp/a%20b.rpm"_s << "/tmp/a%20b.rpm"_s;
        QTest::newRow("placeholder") << "/tmp/%1.rpm"_s << "/tmp/%1.rpm"_s;
        QTest::newRow("blank") << "/tmp/a b.rpm"_s << "/tmp/a b.rpm"_s;
        QTest::newRow("hash and question mark") << "/tmp/a#b?c.rpm"_s << "/tmp/a#b?c.rpm"_s;
        QTest::newRow("relative") << "a.rpm"_s << QString();
        QTest::newRow("home") << "~/a.rpm"_s << QString();
        QTest::newRow("web") << "http://example.org/a.rpm"_s << QString();
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("two slashes") << "//tmp/a.rpm"_s << "//tmp/a.rpm"_s;
        QTest::newRow("two slashes, capitals") << "//Tmp/A.rpm"_s << "//tmp/A.rpm"_s;
        QTest::newRow("two slashes, a number") << "//1/a.rpm"_s << "//0.0.0.1/a.rpm"_s;
        QTest::newRow("two slashes, a bracket") << "//[/a.rpm"_s << QString();
        QTest::newRow("three slashes") << "///tmp/a.rpm"_s << QString();
    }

    // Known behaviour 7, 78.
    void convertsToLocalFiles()
    {
        QFETCH(QString, fileUrl);
        QFETCH(QString, path);
        const DeviceFile emulator(EmulatorMarker);
        m_handler->installFiles({"/first.rpm"_s, fileUrl, "/last.rpm"_s});

        QTRY_COMPARE_WITH_TIMEOUT(
                entries().filter(".Install("_s),
                QStringList({installCall("/first.rpm"_s), installCall(path), installCall("/last.rpm"_s)}), WaitLimit);
        QTRY_COMPARE_WITH_TIMEOUT(state(), Idle, WaitLimit);
    }

    void mayBeSilentInSdkModeOnly_data()
    {
        QTest::addColumn<bool>("sdkMode");
        QTest::addColumn<bool>("keepUserdata");
        QTest::newRow("ordinary") << false << false;
        QTest::newRow("ordinary, keeping") << false << true;
        QTest::newRow("sdk mode") << true << false;
        QTest::newRow("sdk mode, keeping") << true << true;
    }

    void mayBeSilentInSdkModeOnly()
    {
        QFETCH(bool, sdkMode);
        QFETCH(bool, keepUserdata);
        // In sdk mode the package manager first removes the installed package.
        m_peer->answer("GetPackage"_s, PeerAnswer::values("(@a{ss} {},)"));
        m_peer->answer("Remove"_s, PeerAnswer::values());
        m_handler->installFiles({packageFile(Plain)}, sdkMode, keepUserdata);

        QCOMPARE(TestDialog::windows().isEmpty(), sdkMode);
        QTRY_COMPARE_WITH_TIMEOUT(state(), sdkMode ? Idle : "1 running, 0 waiting"_s, WaitLimit);
    }
};

VELMORA_TEST(RequestArgumentsTest, Device, Gui)

#include "tst_requestarguments.moc"
