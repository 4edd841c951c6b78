// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "installclient.h"

#include "journal.h"
#include "messagelog.h"
#include "recordingpeer.h"
#include "testrunner.h"

#include <memory>
#include <optional>

namespace {

const QString Name = QStringLiteral("org.velmoraos.installationhandler");
const QString Method = QStringLiteral("installFiles");

const QString Failure = QStringLiteral("warning: int main(int, char**) failed to request file installation:");

QString installFiles(const QString &argument)
{
    return QStringLiteral("org.velmoraos.installationhandler /org/velmoraos/installationhandler "
                          "org.velmoraos.installationhandler.installFiles('%1',)")
            .arg(argument);
}

}

/** What the client asks of the service, and what it makes of the answer. */
class InstallClientTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void sendsWhatWasTyped_data();
    void sendsWhatWasTyped();
    void isContentWithAnyAnswer_data();
    void isContentWithAnyAnswer();
    void failsWithAnError_data();
    void failsWithAnError();
    void failsWithoutService();

private:
    Journal m_journal;
    std::optional<MessageLog> m_log;
    std::unique_ptr<RecordingPeer> m_service;
};

void InstallClientTest::init()
{
    m_service = std::make_unique<RecordingPeer>(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), QStringList(Name),
                                                &m_journal);
    m_service->answer(Method, PeerAnswer::values());
    m_journal.clear();
    m_log.emplace(&m_journal);
}

void InstallClientTest::cleanup()
{
    m_log.reset();
    m_service.reset();
}

void InstallClientTest::sendsWhatWasTyped_data()
{
    QTest::addColumn<QByteArray>("typed");
    QTest::addColumn<QString>("sent");
    QTest::newRow("path") << QByteArray("/tmp/a.rpm") << QStringLiteral("/tmp/a.rpm");
    QTest::newRow("URL") << QByteArray("file:///tmp/a%20b.rpm") << QStringLiteral("file:///tmp/a%20b.rpm");
    QTest::newRow("relative") << QByteArray("../a b.rpm") << QStringLiteral("../a b.rpm");
    QTest::newRow("absent") << QByteArray("/no/such/file") << QStringLiteral("/no/such/file");
    QTest::newRow("empty") << QByteArray("") << QString();
    QTest::newRow("UTF-8") << QByteArray("/tmp/\xc3\xa4\xe4\xbd\xa0.rpm") << QStringLiteral("/tmp/ä\u4f60.rpm");
    QTest::newRow("not UTF-8") << QByteArray("/tmp/\xe4.rpm") << QStringLiteral("/tmp/\ufffd.rpm");
}

// Required: one plain string, although the service's method takes a list.
void InstallClientTest::sendsWhatWasTyped()
{
    QFETCH(QByteArray, typed);
    QFETCH(QString, sent);

    QCOMPARE(requestInstallation(typed.constData()), 0);
    QCOMPARE(m_journal.entries(), QStringList(installFiles(sent)));
}

void InstallClientTest::isContentWithAnyAnswer_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("nothing") << QByteArray("()");
    QTest::newRow("no") << QByteArray("(false,)");
    QTest::newRow("more") << QByteArray("('error', int64 -1, {'a': <1>})");
}

void InstallClientTest::isContentWithAnyAnswer()
{
    QFETCH(QByteArray, answer);
    m_service->answer(Method, PeerAnswer::values(answer));

    QCOMPARE(requestInstallation("/a.rpm"), 0);
    QCOMPARE(m_journal.entries(), QStringList(installFiles(QStringLiteral("/a.rpm"))));
}

void InstallClientTest::failsWithAnError_data()
{
    QTest::addColumn<PeerAnswer>("answer");
    QTest::newRow("refusal") << PeerAnswer::error("a.b.Failed", "a reason that nobody gets to see");
    QTest::newRow("no such form") << PeerAnswer::error("org.freedesktop.DBus.Error.UnknownMethod", "No such method");
    QTest::newRow("death") << PeerAnswer::death();
}

void InstallClientTest::failsWithAnError()
{
    QFETCH(PeerAnswer, answer);
    m_service->answer(Method, answer);

    QCOMPARE(requestInstallation("/a.rpm"), 1);
    QCOMPARE(m_journal.entries(), QStringList({installFiles(QStringLiteral("/a.rpm")), Failure}));
}

void InstallClientTest::failsWithoutService()
{
    m_service.reset();
    QCOMPARE(requestInstallation("/a.rpm"), 1);
    QCOMPARE(m_journal.entries(), QStringList(Failure));
}

VELMORA_TEST(InstallClientTest, Gui)

#include "tst_installclient.moc"
