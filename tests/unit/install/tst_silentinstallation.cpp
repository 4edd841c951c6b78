// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "transactionfixture.h"

#include "devicefile.h"
#include "testrunner.h"

namespace {

const QString Query = "IsSilentInstallationEnabled"_s;
const QString Emulator = "/etc/velmoraos-emulator"_s;
const QString Shown = "dialog shown full screen"_s;

QString fetchWarning(const char *message)
{
    return R"(warning: Could not fetch developer mode state:  "%1")"_s.arg(QLatin1String(message));
}

}

/** Whether a file is installed without asking: the developer mode's answers, its failures, and the emulator. */
class SilentInstallationTest : public TransactionFixture
{
    Q_OBJECT

private Q_SLOTS:
    void asksOrDoesNot_data()
    {
        QTest::addColumn<QByteArray>("mode");
        QTest::addColumn<PeerAnswer>("answer");
        QTest::addColumn<QString>("warning");
        const auto row = [](const char *name, const QByteArray &mode, const PeerAnswer &answer,
                            const QString &warning) { QTest::newRow(name) << mode << answer << warning; };
        const PeerAnswer yes = PeerAnswer::values("(true,)");
        const PeerAnswer no = PeerAnswer::values("(false,)");
        const QString notAllowed = confirmWarning(NotAllowed);
        row("sdk mode, allowed", "sdk", yes, {});
        row("sdk mode, not allowed", "sdk", no, notAllowed);
        row("ordinary, allowed", "", yes, confirmWarning(NotSdkMode));
        row("ordinary, not allowed", "", no, confirmWarning(NotSdkMode + NotAllowed));

        // The emulator asks the developer mode all the same, and logs the same. Known behaviour 49.
        row("emulator, sdk mode, allowed", "sdk, emulator", yes, {});
        row("emulator, sdk mode, not allowed", "sdk, emulator", no, notAllowed);
        row("emulator, ordinary, allowed", "emulator", yes, confirmWarning(NotSdkMode));
        row("emulator, ordinary, not allowed", "emulator", no, confirmWarning(NotSdkMode + NotAllowed));
        row("emulator, failing", "emulator", PeerAnswer::error("a.b.C", "No"), fetchWarning("No"));

        const QByteArray locked = "ru.quon.developermode.Error.Locked";
        row("refuses", "sdk", PeerAnswer::error(locked, "Not now"), fetchWarning("Not now"));
        row("refuses without a message", "sdk", PeerAnswer::error(locked), fetchWarning(""));
        row("knows no such method", "sdk",
            PeerAnswer::error("org.freedesktop.DBus.Error.UnknownMethod", "No such method"),
            fetchWarning("No such method"));
        row("dies", "sdk", PeerAnswer::death(),
            fetchWarning("Message recipient disconnected from message bus without replying"));

        // Anything that Qt converts to a boolean is one; all else counts as false.
        for (const char *values : {"('true',)", "('yes',)", "(1,)", "(-1,)", "(byte 0x01,)", "(int16 2,)",
                                   "(uint64 5,)", "(0.5,)", "(true, false)"}) {
            row(values, "sdk", PeerAnswer::values(values), {});
        }
        for (const char *values : {"('false',)", "('False',)", "('0',)", "('',)", "(0,)", "(byte 0x00,)", "(uint32 0,)",
                                   "(0.0,)", "({'enabled': <true>},)", "(['true'],)", "((true, true),)", "(<true>,)",
                                   "(objectpath '/true',)", "()", "(false, true)"}) {
            row(values, "sdk", PeerAnswer::values(values), notAllowed);
        }
    }

    void asksOrDoesNot()
    {
        QFETCH(QByteArray, mode);
        QFETCH(PeerAnswer, answer);
        QFETCH(QString, warning);
        std::optional<DeviceFile> emulator;
        if (mode.contains("emulator")) {
            emulator.emplace(Emulator);
        }
        m_peer->answer(Query, answer);
        m_peer->overlook("notification_begin_req"_s);
        start({Path}, mode.contains("sdk"));

        const bool asks = !emulator && !warning.isEmpty();
        const QStringList expected = plainRead() + (warning.isEmpty() ? QStringList() : QStringList(warning))
                + (asks ? QStringList{"needConfirm"_s, Shown} : QStringList{installCall(), finished(true)});
        QCOMPARE(settledEntries(expected.size()), expected);
    }

    void asksWithoutDeveloperMode()
    {
        m_peer.reset();
        start({Path}, true);
        QCOMPARE(entries(),
                 QStringList({readLine(Plain),
                              fetchWarning("The name ru.quon.developermode was not provided by any .service files"),
                              "needConfirm"_s, Shown}));
    }

    void asksWhenTheDeveloperModeIsSilent()
    {
        // The query may reach the peer after the time-out on a busy machine.
        m_peer->overlook(Query);
        m_peer->answer(Query, PeerAnswer::held());
        m_developerMode->setTimeout(100);
        start({Path}, true);

        const QString warning = fetchWarning(
                "Did not receive a reply. Possible causes include: the remote application did not send a reply, the "
                "message bus security policy blocked the reply, the reply timeout expired, or the network connection "
                "was "
                "broken.");
        QCOMPARE(entries(), QStringList({readLine(Plain), warning}) + asking(Plain).mid(3));
    }

    // Known behaviour 50.
    void asksTheDeveloperModeForEveryFile()
    {
        m_peer->answer(Query, {PeerAnswer::values("(true,)"), PeerAnswer::values("(false,)")});
        start({Path, Path}, true);

        const QStringList expected = plainRead() + QStringList(installCall()) + plainRead()
                + QStringList(confirmWarning(NotAllowed)) + asking(Plain).mid(3);
        QCOMPARE(settledEntries(expected.size()), expected);
    }

    void needsNoViewOnTheEmulator()
    {
        const DeviceFile emulator(Emulator, "contents are of no importance\n");
        make({Path}, false)->start();

        const QStringList expected =
                plainRead() + QStringList{confirmWarning(NotSdkMode), installCall(), finished(true)};
        QCOMPARE(settledEntries(expected.size()), expected);
    }
};

VELMORA_TEST(SilentInstallationTest, Device, Gui)

#include "tst_silentinstallation.moc"
