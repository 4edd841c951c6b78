// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "transactionscene.h"

#include "devicefile.h"
#include "devicetest.h"

namespace {

const QString Plain = QStringLiteral("plain");
const QString Query = QStringLiteral("IsSilentInstallationEnabled");

const QString NotSdkMode = QStringLiteral("The installation is not running in sdk mode. ");
const QString NotAllowed = QStringLiteral("Silent software instalation is not allowed");

QString fetchWarning(const char *message)
{
    return QStringLiteral(R"(warning: Could not fetch developer mode state:  "%1")").arg(QLatin1String(message));
}

}

/** Whether a file is installed without asking: what the developer mode says, what it fails to say, and the emulator. */
class SilentInstallationTest : public TransactionScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUpTransactions(); }
    void cleanup() { tearDownTransactions(); }

    void needsSdkModeAndPermission_data();
    void needsSdkModeAndPermission();
    void takesAnyAnswerForABoolean_data();
    void takesAnyAnswerForABoolean();
    void asksWhenTheDeveloperModeFails_data();
    void asksWhenTheDeveloperModeFails();
    void asksWithoutDeveloperMode();
    void asksWhenTheDeveloperModeIsSilent();
    void asksTheDeveloperModeForEveryFile();
    void needsNobodyOnTheEmulator_data();
    void needsNobodyOnTheEmulator();
    void needsNoViewOnTheEmulator();

private:
    QStringList silently() const;
    QStringList afterAsking() const;
};

QStringList SilentInstallationTest::silently() const
{
    return {installCall(packageFile(Plain)), finished(true)};
}

QStringList SilentInstallationTest::afterAsking() const
{
    return asking(Plain).mid(3);
}

void SilentInstallationTest::needsSdkModeAndPermission_data()
{
    QTest::addColumn<bool>("sdkMode");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("sdk mode, allowed") << true << QByteArray("(true,)") << silently();
    QTest::newRow("sdk mode, not allowed")
            << true << QByteArray("(false,)") << QStringList(confirmWarning(NotAllowed)) + afterAsking();
    QTest::newRow("ordinary, allowed") << false << QByteArray("(true,)")
                                       << QStringList(confirmWarning(NotSdkMode)) + afterAsking();
    QTest::newRow("ordinary, not allowed")
            << false << QByteArray("(false,)") << QStringList(confirmWarning(NotSdkMode + NotAllowed)) + afterAsking();
}

void SilentInstallationTest::needsSdkModeAndPermission()
{
    QFETCH(bool, sdkMode);
    QFETCH(QByteArray, answer);
    QFETCH(QStringList, expected);
    m_peer->answer(Query, PeerAnswer::values(answer));
    start({packageFile(Plain)}, sdkMode);

    expected = QStringList{readLine(Plain), silenceQuery()} + expected;
    QCOMPARE(settledEntries(expected.size()), expected);
}

void SilentInstallationTest::takesAnyAnswerForABoolean_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<bool>("means");
    const auto row = [](const char *answer, bool means) { QTest::newRow(answer) << QByteArray(answer) << means; };
    row("('true',)", true);
    row("('yes',)", true);
    row("('false',)", false);
    row("('False',)", false);
    row("('0',)", false);
    row("('',)", false);
    row("(1,)", true);
    row("(0,)", false);
    row("(-1,)", true);
    row("(byte 0x01,)", true);
    row("(byte 0x00,)", false);
    row("(int16 2,)", true);
    row("(uint32 0,)", false);
    row("(uint64 5,)", true);
    row("(0.5,)", true);
    row("(0.0,)", false);
    row("({'enabled': <true>},)", false);
    row("(['true'],)", false);
    row("((true, true),)", false);
    row("(<true>,)", false);
    row("(objectpath '/true',)", false);
    row("()", false);
    row("(true, false)", true);
    row("(false, true)", false);
}

// What Qt converts to a boolean is one; anything else counts as false.
void SilentInstallationTest::takesAnyAnswerForABoolean()
{
    QFETCH(QByteArray, answer);
    QFETCH(bool, means);
    m_peer->answer(Query, PeerAnswer::values(answer));
    start({packageFile(Plain)}, true);

    const QStringList expected = QStringList{readLine(Plain), silenceQuery()}
            + (means ? silently() : QStringList(confirmWarning(NotAllowed)) + afterAsking());
    QCOMPARE(settledEntries(expected.size()), expected);
}

void SilentInstallationTest::asksWhenTheDeveloperModeFails_data()
{
    QTest::addColumn<PeerAnswer>("answer");
    QTest::addColumn<QString>("warning");
    QTest::newRow("refuses") << PeerAnswer::error("ru.quon.developermode.Error.Locked", "Not now")
                             << fetchWarning("Not now");
    QTest::newRow("refuses without a message")
            << PeerAnswer::error("ru.quon.developermode.Error.Locked") << fetchWarning("");
    QTest::newRow("knows no such method")
            << PeerAnswer::error("org.freedesktop.DBus.Error.UnknownMethod", "No such method")
            << fetchWarning("No such method");
    QTest::newRow("dies") << PeerAnswer::death()
                          << fetchWarning("Message recipient disconnected from message bus without replying");
}

void SilentInstallationTest::asksWhenTheDeveloperModeFails()
{
    QFETCH(PeerAnswer, answer);
    QFETCH(QString, warning);
    m_peer->answer(Query, answer);
    m_peer->overlook(QStringLiteral("notification_begin_req"));
    start({packageFile(Plain)}, true);

    settle();
    QCOMPARE(entries(),
             QStringList({readLine(Plain), silenceQuery(), warning, QStringLiteral("needConfirm"),
                          QStringLiteral("dialog shown full screen")}));
}

void SilentInstallationTest::asksWithoutDeveloperMode()
{
    m_peer.reset();
    start({packageFile(Plain)}, true);

    QCOMPARE(entries(),
             QStringList({
                     readLine(Plain),
                     fetchWarning("The name ru.quon.developermode was not provided by any .service files"),
                     QStringLiteral("needConfirm"),
                     QStringLiteral("dialog shown full screen"),
             }));
}

void SilentInstallationTest::asksWhenTheDeveloperModeIsSilent()
{
    m_developerMode->setTimeout(100);
    m_peer->answer(Query, PeerAnswer::held());
    start({packageFile(Plain)}, true);

    const QString warning = fetchWarning(
            "Did not receive a reply. Possible causes include: the remote application did not send a reply, the "
            "message bus security policy blocked the reply, the reply timeout expired, or the network connection was "
            "broken.");
    QCOMPARE(entries(), QStringList({readLine(Plain), silenceQuery(), warning}) + afterAsking());
}

void SilentInstallationTest::asksTheDeveloperModeForEveryFile()
{
    m_peer->answer(Query, {PeerAnswer::values("(true,)"), PeerAnswer::values("(false,)")});
    start({packageFile(Plain), packageFile(Plain)}, true);

    const QStringList expected = QStringList{readLine(Plain), silenceQuery(), installCall(packageFile(Plain)),
                                             readLine(Plain), silenceQuery(), confirmWarning(NotAllowed)}
            + afterAsking();
    QCOMPARE(settledEntries(expected.size()), expected);
}

void SilentInstallationTest::needsNobodyOnTheEmulator_data()
{
    QTest::addColumn<bool>("sdkMode");
    QTest::addColumn<PeerAnswer>("answer");
    QTest::addColumn<QStringList>("warnings");
    QTest::newRow("ordinary, allowed") << false << PeerAnswer::values("(true,)")
                                       << QStringList(confirmWarning(NotSdkMode));
    QTest::newRow("ordinary, not allowed")
            << false << PeerAnswer::values("(false,)") << QStringList(confirmWarning(NotSdkMode + NotAllowed));
    QTest::newRow("sdk mode, not allowed")
            << true << PeerAnswer::values("(false,)") << QStringList(confirmWarning(NotAllowed));
    QTest::newRow("sdk mode, allowed") << true << PeerAnswer::values("(true,)") << QStringList();
    QTest::newRow("failing") << false << PeerAnswer::error("a.b.C", "No") << QStringList(fetchWarning("No"));
}

// The developer mode is asked all the same, and the log says what it said.
void SilentInstallationTest::needsNobodyOnTheEmulator()
{
    QFETCH(bool, sdkMode);
    QFETCH(PeerAnswer, answer);
    QFETCH(QStringList, warnings);
    const DeviceFile emulator(QStringLiteral("/etc/velmoraos-emulator"));
    m_peer->answer(Query, answer);
    start({packageFile(Plain)}, sdkMode);

    const QStringList expected = QStringList{readLine(Plain), silenceQuery()} + warnings + silently();
    QCOMPARE(settledEntries(expected.size()), expected);
}

void SilentInstallationTest::needsNoViewOnTheEmulator()
{
    const DeviceFile emulator(QStringLiteral("/etc/velmoraos-emulator"), "contents are of no importance\n");
    make({packageFile(Plain)}, false)->start();

    const QStringList expected = QStringList{readLine(Plain), silenceQuery(), confirmWarning(NotSdkMode)} + silently();
    QCOMPARE(settledEntries(expected.size()), expected);
}

int main(int argc, char **argv)
{
    return runOnDevice<SilentInstallationTest>(argc, argv);
}

#include "tst_silentinstallation.moc"
