// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "uninstallscene.h"

#include "testrunner.h"

#include <QMetaEnum>

using PackageKit::Transaction;

namespace {

const QString Id = QStringLiteral("a;1-1;noarch;installed");
const QString Refusal = QStringLiteral("b needs a,\nas everybody knows");
const QString Uninstall = QStringLiteral("Uninstall");

}

/** The second half of a removal: PackageKit removes what it has found. */
class UninstallRemovingTest : public UninstallScene
{
    Q_OBJECT

private Q_SLOTS:
    void removes_data();
    void removes();
    void passesProgressOn_data();
    void passesProgressOn();
    void endsWithoutAWord_data();
    void endsWithoutAWord();
    void failsOnError();
    void failsOnceWhenTheEndIsQueued();
    void failsAndSucceedsWhenSuccessIsQueued();
    void failsWhenPackageKitVanishes();
    void failsWhenPackageKitRefuses();
    void cancelsBeforeTheStart();
    void cancelsWhileResolving();
    void cancelsWhileRemoving();
    void cancelsAndSucceedsWhenTheEndIsQueued();
    void reportsFromWithinItsSignals();
};

void UninstallRemovingTest::removes_data()
{
    QTest::addColumn<bool>("autoremove");
    QTest::newRow("the package alone") << false;
    QTest::newRow("what only it needs, too") << true;
}

void UninstallRemovingTest::removes()
{
    QFETCH(bool, autoremove);

    QVERIFY(startRemoving(autoremove));
    // What is being removed is not found again.
    m_packageKit->tellPackage(1, Id);
    QVERIFY(happens({}));
    m_packageKit->tellEnd(1, Transaction::ExitSuccess, 4711);
    QVERIFY(happens(QStringList(endLine(QStringLiteral("ExitSuccess"), 4711)) + succeeding()
                    + QStringList(deletion())));
}

void UninstallRemovingTest::passesProgressOn_data()
{
    QTest::addColumn<uint>("percentage");
    QTest::addColumn<int>("progress");
    QTest::newRow("none") << 0u << 0;
    QTest::newRow("some") << 50u << 50;
    QTest::newRow("all") << 100u << 100;
    QTest::newRow("unknown") << 101u << 101;
    QTest::newRow("absurd") << 4000000u << 4000000;
}

void UninstallRemovingTest::passesProgressOn()
{
    QFETCH(uint, percentage);
    QFETCH(int, progress);

    QVERIFY(startRemoving());
    // Whichever package it is about.
    m_packageKit->tellProgress(1, QStringLiteral("other;1;;"), percentage);
    m_packageKit->tellProgress(1, Id, percentage);
    const QString entry = QStringLiteral("progress %1").arg(progress);
    QVERIFY(happens({entry, entry}));
}

void UninstallRemovingTest::endsWithoutAWord_data()
{
    QTest::addColumn<PackageKit::Transaction::Exit>("exit");
    const QMetaEnum exits = QMetaEnum::fromType<Transaction::Exit>();
    for (int i = 0; i < exits.keyCount(); ++i) {
        if (exits.value(i) != Transaction::ExitSuccess) {
            QTest::newRow(exits.key(i)) << static_cast<Transaction::Exit>(exits.value(i));
        }
    }
}

// Required: without an error there is no failure.
void UninstallRemovingTest::endsWithoutAWord()
{
    QFETCH(PackageKit::Transaction::Exit, exit);

    QVERIFY(startRemoving());
    m_packageKit->tellEnd(1, exit, 7);
    QVERIFY(happens({endLine(QString::fromLatin1(QTest::currentDataTag()), 7), deletion()}));
}

void UninstallRemovingTest::failsOnError()
{
    QVERIFY(startRemoving());
    m_packageKit->tellError(1, Transaction::ErrorDepResolutionFailed, Refusal);
    QVERIFY(happens(failing(Uninstall, QStringLiteral("ErrorDepResolutionFailed"), Refusal) + QStringList(deletion())));
    m_packageKit->tellEnd(1, Transaction::ExitFailed);
    QVERIFY(happens({}));
}

void UninstallRemovingTest::failsOnceWhenTheEndIsQueued()
{
    QVERIFY(startRemoving());
    m_packageKit->tellError(1, Transaction::ErrorPackageFailedToRemove, Refusal);
    m_packageKit->tellEnd(1, Transaction::ExitFailed, 3);
    QVERIFY(PackageKitPeer::settle());
    QVERIFY(happens(failing(Uninstall, QStringLiteral("ErrorPackageFailedToRemove"), Refusal)
                    + QStringList{endLine(QStringLiteral("ExitFailed"), 3), deletion()}));
}

void UninstallRemovingTest::failsAndSucceedsWhenSuccessIsQueued()
{
    QVERIFY(startRemoving());
    m_packageKit->tellError(1, Transaction::ErrorNoCache, Refusal);
    m_packageKit->tellEnd(1, Transaction::ExitSuccess);
    QVERIFY(PackageKitPeer::settle());
    QVERIFY(happens(failing(Uninstall, QStringLiteral("ErrorNoCache"), Refusal)
                    + QStringList(endLine(QStringLiteral("ExitSuccess"))) + succeeding() + QStringList(deletion())));
}

void UninstallRemovingTest::failsWhenPackageKitVanishes()
{
    QVERIFY(startRemoving());
    m_packageKit->tellProgress(1, Id, 50);
    QVERIFY(happens({QStringLiteral("progress 50")}));
    m_packageKit.reset();
    QVERIFY(happens(
            failing(Uninstall, QStringLiteral("ErrorProcessKill"), QStringLiteral("The PackageKit daemon has crashed"))
            + QStringList{endLine(QStringLiteral("ExitKilled")), deletion()}));
}

void UninstallRemovingTest::failsWhenPackageKitRefuses()
{
    QVERIFY(startResolving());
    m_packageKit->peer().answer(QStringLiteral("RemovePackages"),
                                PeerAnswer::error("org.freedesktop.PackageKit.Transaction.RefusedByPolicy", "Not you"));
    m_packageKit->tellPackage(0, Id);
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    const QString removal = QStringLiteral("RemovePackages(uint64 2, ['%1'], false, false)").arg(Id);
    QVERIFY(happens(QStringList(resolvedLine(Id)) + m_packageKit->calls(1, removal)
                    + failing(Uninstall, QStringLiteral("ErrorInternalError"), QStringLiteral("Not you"))
                    + QStringList{endLine(QStringLiteral("ExitFailed")), deletion()}));
}

void UninstallRemovingTest::cancelsBeforeTheStart()
{
    const auto transaction = make({QStringLiteral("a")});
    QVERIFY(!transaction->canCancel());
    transaction->cancel();
    QVERIFY(happens({QStringLiteral("failure \"cancelled\""), QStringLiteral("finished"), deletion()}));
}

// What PackageKit does goes on, and nobody hears of it.
void UninstallRemovingTest::cancelsWhileResolving()
{
    Package::Transaction *const transaction = startResolving();
    QVERIFY(transaction);
    QVERIFY(!transaction->canCancel());
    transaction->cancel();
    QVERIFY(happens({QStringLiteral("failure \"cancelled\""), QStringLiteral("finished"), deletion()}));
    m_packageKit->tellPackage(0, Id);
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens({}));
}

void UninstallRemovingTest::cancelsWhileRemoving()
{
    Package::Transaction *const transaction = startRemoving();
    QVERIFY(transaction);
    QVERIFY(!transaction->canCancel());
    transaction->cancel();
    QVERIFY(happens({QStringLiteral("failure \"cancelled\""), QStringLiteral("finished"), deletion()}));
    m_packageKit->tellProgress(1, Id, 50);
    m_packageKit->tellEnd(1, Transaction::ExitSuccess);
    QVERIFY(happens({}));
}

void UninstallRemovingTest::cancelsAndSucceedsWhenTheEndIsQueued()
{
    Package::Transaction *const transaction = startRemoving();
    QVERIFY(transaction);
    m_packageKit->tellEnd(1, Transaction::ExitSuccess);
    // The end waits for the event loop, and so does the deletion, behind it.
    QVERIFY(PackageKitPeer::arrives());
    transaction->cancel();
    QVERIFY(happens(QStringList{QStringLiteral("failure \"cancelled\""), QStringLiteral("finished"),
                                endLine(QStringLiteral("ExitSuccess"))}
                    + succeeding() + QStringList(deletion())));
}

// By its last signal it still exists, and whoever hears it may start another.
void UninstallRemovingTest::reportsFromWithinItsSignals()
{
    const auto transaction = startRemoving();
    QVERIFY(transaction);
    connect(transaction, &Package::Transaction::finished, this, [this] { make({QStringLiteral("b")})->start(); });
    m_packageKit->tellEnd(1, Transaction::ExitSuccess);
    QVERIFY(QTest::qWaitFor([this] {
        return m_journal.entries().contains(m_packageKit->call(2, QStringLiteral("Resolve(uint64 4, ['b'])")));
    }));
    const QStringList ended{endLine(QStringLiteral("ExitSuccess")), QStringLiteral("success"),
                            QStringLiteral("finished"), startLine(QStringLiteral("(\"b\")"))};
    QCOMPARE(m_journal.entries().mid(0, 4), ended);
    QCOMPARE(m_journal.entries().count(deletion()), 1);
}

VELMORA_TEST(UninstallRemovingTest, Gui)

#include "tst_uninstallremoving.moc"
