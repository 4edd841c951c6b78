// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "handlerscene.h"

#include "devicefile.h"
#include "testrunner.h"

namespace {

const QString Plain = QStringLiteral("plain");
const QString Translated = QStringLiteral("translated");
const QString Idle = QStringLiteral("idle");
const QString EmulatorMarker = QStringLiteral("/etc/velmoraos-emulator");
const QString Aborted = QStringLiteral("installationhandler-user-aborted");
const QString NotSdkMode = QStringLiteral("The installation is not running in sdk mode. ");
const QString Destroyed = QStringLiteral("dialog destroyed");

}

/** Which transaction starts when, and what it is given. */
class InstallationQueueTest : public HandlerScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUpHandler(); }
    void cleanup() { tearDownHandler(); }

    void waitsWhileTheDialogIsOnScreen();
    void runsSideBySideWithoutDialog();
    void keepsTheOrderOfTheCalls();
    void showsASecondDialogAfterAnEnd();
    void tellsOnceAfterASecondAnswer();
    void cancelsTwoWithOneAnswer();
    void convertsToLocalFiles_data();
    void convertsToLocalFiles();
    void mayBeSilentInSdkModeOnly_data();
    void mayBeSilentInSdkModeOnly();
};

void InstallationQueueTest::waitsWhileTheDialogIsOnScreen()
{
    m_handler->installFiles({packageFile(Plain)});
    m_journal.clear();
    m_handler->installFiles({packageFile(Translated)});
    m_handler->installFiles({packageFile(Plain)});
    QVERIFY(settle());
    QCOMPARE(entries(), QStringList());
    QCOMPARE(state(), QStringLiteral("1 running, 2 waiting"));

    // Each starts after the end of the one before is on the bus.
    dismiss();
    QCOMPARE(entries(),
             QStringList({endRequest(Plain, 1000000), finished(false, Aborted, QStringLiteral("1 running, 2 waiting"))})
                     + asking(Translated) + QStringList(Destroyed));
    QCOMPARE(state(), QStringLiteral("1 running, 1 waiting"));

    // The third needs no dialog.
    const DeviceFile emulator(EmulatorMarker);
    m_journal.clear();
    dismiss();
    const QStringList expected{endRequest(Translated, 1000000),
                               finished(false, Aborted, QStringLiteral("1 running, 1 waiting")),
                               readLine(Plain),
                               silenceQuery(),
                               confirmWarning(NotSdkMode),
                               installCall(packageFile(Plain)),
                               finished(true, QString(), QStringLiteral("1 running, 0 waiting"))};
    QStringList happened = settledEntries(expected.size() + 1);
    QCOMPARE(happened.removeAll(Destroyed), 1);
    QCOMPARE(happened, expected);
    QCOMPARE(state(), Idle);
}

// The package manager is busy with the first, which keeps nobody waiting.
void InstallationQueueTest::runsSideBySideWithoutDialog()
{
    const DeviceFile emulator(EmulatorMarker);
    m_peer->answer(QStringLiteral("Install"), PeerAnswer::held());
    m_handler->installFiles({packageFile(Plain)});
    m_handler->installFiles({packageFile(Translated)});
    QCOMPARE(state(), QStringLiteral("2 running, 0 waiting"));
    QTRY_COMPARE(entries().filter(QStringLiteral(".Install(")),
                 QStringList({installCall(packageFile(Plain)), installCall(packageFile(Translated))}));

    m_journal.clear();
    QVERIFY(m_peer->answerHeld(PeerAnswer::error("a.b.Failed")));
    QVERIFY(settle());
    QCOMPARE(state(), QStringLiteral("1 running, 0 waiting"));
    QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
    QVERIFY(settle());
    QCOMPARE(entries(),
             QStringList({finished(false, QStringLiteral("zarn_installation_error_desc_Failed (code: Failed)"),
                                   QStringLiteral("2 running, 0 waiting")),
                          finished(true, QString(), QStringLiteral("1 running, 0 waiting"))}));
    QCOMPARE(state(), Idle);
}

// The dialog has gone, but what waited for it comes first.
void InstallationQueueTest::keepsTheOrderOfTheCalls()
{
    m_peer->answer(QStringLiteral("Install"), PeerAnswer::held());
    m_handler->installFiles({packageFile(Plain)});
    m_handler->installFiles({packageFile(Translated)});
    confirm();
    QCOMPARE(state(), QStringLiteral("1 running, 1 waiting"));

    m_journal.clear();
    m_handler->installFiles({packageFile(Plain)});
    QCOMPARE(entries(), asking(Translated));
    QCOMPARE(state(), QStringLiteral("2 running, 1 waiting"));
}

// Required: an end starts the next transaction whether or not another one's
// dialog is on screen.
void InstallationQueueTest::showsASecondDialogAfterAnEnd()
{
    m_peer->answer(QStringLiteral("Install"), PeerAnswer::held());
    DeviceFile emulator(EmulatorMarker);
    m_handler->installFiles({packageFile(Plain)});
    emulator.remove();
    m_handler->installFiles({packageFile(Translated)});
    m_handler->installFiles({packageFile(Plain)});
    QCOMPARE(TestDialog::windows().size(), 1);
    QCOMPARE(state(), QStringLiteral("2 running, 1 waiting"));

    QVERIFY(settle());
    QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
    QTRY_COMPARE(state(), QStringLiteral("2 running, 0 waiting"));
    QCOMPARE(TestDialog::windows().size(), 2);
    QVERIFY(TestDialog::windows().first()->isVisible());
    QVERIFY(TestDialog::windows().last()->isVisible());
}

void InstallationQueueTest::tellsOnceAfterASecondAnswer()
{
    m_peer->answer(QStringLiteral("Install"), PeerAnswer::held());
    m_handler->installFiles({packageFile(Plain)});
    m_journal.clear();
    QQuickWindow *window = TestDialog::window();
    TestDialog::confirm(window);
    TestDialog::dismiss(window);

    const QStringList expected{installCall(packageFile(Plain)), endRequest(Plain, 3000000), endRequest(Plain, 1000000),
                               finished(false, Aborted, QStringLiteral("1 running, 0 waiting"))};
    QVERIFY(settle());
    QCOMPARE(entries(), expected);
    QVERIFY(m_peer->answerHeld(PeerAnswer::values()));
    QVERIFY(settle());
    QCOMPARE(entries(), expected);
    QCOMPARE(state(), Idle);
}

// Required: who has not finished hears every answer of the one dialog.
void InstallationQueueTest::cancelsTwoWithOneAnswer()
{
    m_peer->answer(QStringLiteral("Install"), PeerAnswer::held());
    m_handler->installFiles({packageFile(Plain)});
    confirm();
    m_handler->installFiles({packageFile(Translated)});
    QVERIFY(settle());
    m_journal.clear();
    dismiss();

    QCOMPARE(entries(),
             QStringList({endRequest(Translated, 1000000),
                          finished(false, Aborted, QStringLiteral("2 running, 0 waiting")),
                          finished(false, Aborted, QStringLiteral("1 running, 0 waiting")), Destroyed}));
    QCOMPARE(state(), Idle);
}

void InstallationQueueTest::convertsToLocalFiles_data()
{
    QTest::addColumn<QString>("fileUrl");
    QTest::addColumn<QString>("path");
    QTest::newRow("path") << QStringLiteral("/tmp/a.rpm") << QStringLiteral("/tmp/a.rpm");
    QTest::newRow("URL") << QStringLiteral("file:///tmp/a.rpm") << QStringLiteral("/tmp/a.rpm");
    QTest::newRow("URL, encoded") << QStringLiteral("file:///tmp/a%20b%C3%A4.rpm") << QStringLiteral("/tmp/a bä.rpm");
    QTest::newRow("path that looks encoded") << QStringLiteral("/tmp/a%20b.rpm") << QStringLiteral("/tmp/a%20b.rpm");
    QTest::newRow("placeholder") << QStringLiteral("/tmp/%1.rpm") << QStringLiteral("/tmp/%1.rpm");
    QTest::newRow("blank") << QStringLiteral("/tmp/a b.rpm") << QStringLiteral("/tmp/a b.rpm");
    QTest::newRow("hash and question mark") << QStringLiteral("/tmp/a#b?c.rpm") << QStringLiteral("/tmp/a#b?c.rpm");
    QTest::newRow("relative") << QStringLiteral("a.rpm") << QString();
    QTest::newRow("home") << QStringLiteral("~/a.rpm") << QString();
    QTest::newRow("web") << QStringLiteral("http://example.org/a.rpm") << QString();
    QTest::newRow("empty") << QString() << QString();
}

void InstallationQueueTest::convertsToLocalFiles()
{
    QFETCH(QString, fileUrl);
    QFETCH(QString, path);
    const DeviceFile emulator(EmulatorMarker);
    m_handler->installFiles({QStringLiteral("/first.rpm"), fileUrl, QStringLiteral("/last.rpm")});

    QTRY_COMPARE(entries().filter(QStringLiteral(".Install(")),
                 QStringList({installCall(QStringLiteral("/first.rpm")), installCall(path),
                              installCall(QStringLiteral("/last.rpm"))}));
    QTRY_COMPARE(state(), Idle);
}

void InstallationQueueTest::mayBeSilentInSdkModeOnly_data()
{
    QTest::addColumn<bool>("sdkMode");
    QTest::addColumn<bool>("keepUserdata");
    QTest::newRow("ordinary") << false << false;
    QTest::newRow("ordinary, keeping") << false << true;
    QTest::newRow("sdk mode") << true << false;
    QTest::newRow("sdk mode, keeping") << true << true;
}

void InstallationQueueTest::mayBeSilentInSdkModeOnly()
{
    QFETCH(bool, sdkMode);
    QFETCH(bool, keepUserdata);
    // In sdk mode the package manager removes what is installed first.
    m_peer->answer(QStringLiteral("GetPackage"), PeerAnswer::values("(@a{ss} {},)"));
    m_peer->answer(QStringLiteral("Remove"), PeerAnswer::values());
    m_handler->installFiles({packageFile(Plain)}, sdkMode, keepUserdata);

    QCOMPARE(TestDialog::windows().isEmpty(), sdkMode);
    QTRY_COMPARE(state(), sdkMode ? Idle : QStringLiteral("1 running, 0 waiting"));
}

VELMORA_TEST(InstallationQueueTest, Gui)

#include "tst_installationqueue.moc"
