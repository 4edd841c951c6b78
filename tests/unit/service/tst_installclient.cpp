// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "installclient.h"
#include "journal.h"
#include "recordingpeer.h"
#include "testrunner.h"

#include <memory>
#include <optional>

namespace {

const QString Failure = "warning: int main(int, char**) failed to request file installation:"_s;
const PeerAnswer Refusal = PeerAnswer::error("a.b.Failed", "a reason that is not shown");
const PeerAnswer NoSuchMethod = PeerAnswer::error("org.freedesktop.DBus.Error.UnknownMethod", "No such method");

}

/** The client's request to the service, and the exit status that follows from the answer. */
class InstallClientTest : public QObject
{
    Q_OBJECT

private:
    Journal m_journal;
    std::optional<MessageLog> m_log;
    std::unique_ptr<RecordingPeer> m_service;

private Q_SLOTS:
    void init()
    {
        m_service = std::make_unique<RecordingPeer>(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                                    QStringList("org.velmoraos.installationhandler"_s), &m_journal);
        m_service->answer("installFiles"_s, PeerAnswer::values());
        m_journal.clear();
        m_log.emplace(&m_journal);
    }

    void cleanup()
    {
        m_log.reset();
        m_service.reset();
    }

    void sendsTheArgument_data()
    {
        QTest::addColumn<QByteArray>("argument");
        QTest::addColumn<QString>("sent");
        QTest::newRow("path") << "/tmp/a.rpm"_b << "/tmp/a.rpm"_s;
        QTest::newRow("URL") << "file:///tmp/a%20b.rpm"_b << "file:///tmp/a%20b.rpm"_s;
        QTest::newRow("relative") << "../a b.rpm"_b << "../a b.rpm"_s;
        QTest::newRow("absent") << "/no/such/file"_b << "/no/such/file"_s;
        QTest::newRow("empty") << ""_b << QString();
        QTest::newRow("UTF-8") << "/tmp/\xc3\xa4\xe4\xbd\xa0.rpm"_b << "/tmp/ä\u4f60.rpm"_s;
        QTest::newRow("not UTF-8") << "/tmp/\xe4.rpm"_b << "/tmp/\ufffd.rpm"_s;
    }

    // The argument is one string, although the service's method takes a list. Known behaviour 1.
    void sendsTheArgument()
    {
        QFETCH(QByteArray, argument);
        QFETCH(QString, sent);
        QCOMPARE(requestInstallation(argument.constData()), 0);
        QCOMPARE(m_journal.entries(),
                 QStringList("org.velmoraos.installationhandler /org/velmoraos/installationhandler "
                             "org.velmoraos.installationhandler.installFiles('%1',)"_s.arg(sent)));
    }

    void goesByTheAnswer_data()
    {
        QTest::addColumn<PeerAnswer>("answer");
        QTest::addColumn<int>("status");
        QTest::newRow("nothing") << PeerAnswer::values() << 0;
        QTest::newRow("false") << PeerAnswer::values("(false,)") << 0;
        QTest::newRow("more") << PeerAnswer::values("('error', int64 -1, {'a': <1>})") << 0;
        QTest::newRow("refusal") << Refusal << 1;
        QTest::newRow("no such form") << NoSuchMethod << 1;
        QTest::newRow("death") << PeerAnswer::death() << 1;
    }

    void goesByTheAnswer()
    {
        QFETCH(PeerAnswer, answer);
        QFETCH(int, status);
        m_service->answer("installFiles"_s, answer);

        QCOMPARE(requestInstallation("/a.rpm"), status);
        QCOMPARE(m_journal.entries().mid(1), status == 0 ? QStringList() : QStringList(Failure));
    }

    void failsWithoutService()
    {
        m_service.reset();
        QCOMPARE(requestInstallation("/a.rpm"), 1);
        QCOMPARE(m_journal.entries(), QStringList(Failure));
    }
};

VELMORA_TEST(InstallClientTest, Anywhere, Gui)

#include "tst_installclient.moc"
