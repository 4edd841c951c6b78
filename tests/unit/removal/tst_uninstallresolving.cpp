// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "uninstallscene.h"

#include "testrunner.h"

using PackageKit::Transaction;

namespace {

const QString Id = QStringLiteral("a;1-1;noarch;installed");
const QString Other = QStringLiteral("a;1-1;i686;installed");
const QString Refusal = QStringLiteral("No.\nReally \"not\".");
const QString Removal = QStringLiteral("RemovePackages(uint64 2, ['a;1-1;noarch;installed'], false, false)");

}

/** The first half of a removal: what of the names is installed. */
class UninstallResolvingTest : public UninstallScene
{
    Q_OBJECT

private Q_SLOTS:
    void startsNothingByItself();
    void asksForInstalledPackages_data();
    void asksForInstalledPackages();
    void succeedsWhenNothingIsInstalled_data();
    void succeedsWhenNothingIsInstalled();
    void removesWhateverIsReported();
    void removesAllInOneGo();
    void removesWhateverTheEnd_data();
    void removesWhateverTheEnd();
    void failsOnError();
    void failsAndSucceedsWhenTheEndIsQueued();
    void failsAndRemovesWhenTheEndIsQueued_data();
    void failsAndRemovesWhenTheEndIsQueued();
    void failsForEachError();
    void failsWithoutPackageKit();
    void failsWhenPackageKitRefuses();
    void failsWhenPackageKitVanishes();
    void worksWhenPackageKitIsBack();
    void keepsRemovalsApart();

private:
    QStringList tellPackageAndError(bool errorFirst);
};

void UninstallResolvingTest::startsNothingByItself()
{
    const auto transaction = make({QStringLiteral("a")});
    QVERIFY(happens({}));
    delete transaction;
    QVERIFY(happens({deletion()}));
}

void UninstallResolvingTest::asksForInstalledPackages_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("logged");
    QTest::addColumn<QString>("asked");

    const QString wild = QStringLiteral("a;b *?[$(c)]\n");
    QTest::newRow("one") << QStringList(QStringLiteral("a")) << QStringLiteral("(\"a\")") << QStringLiteral("['a']");
    QTest::newRow("two, as they come") << QStringList({QStringLiteral("b"), QStringLiteral("a")})
                                       << QStringLiteral("(\"b\", \"a\")") << QStringLiteral("['b', 'a']");
    QTest::newRow("none") << QStringList() << QStringLiteral("()") << QStringLiteral("@as []");
    QTest::newRow("an empty one") << QStringList(QString()) << QStringLiteral("(\"\")") << QStringLiteral("['']");
    QTest::newRow("no RPM name") << QStringList(wild) << QStringLiteral("(\"a;b *?[$(c)]\\n\")")
                                 << QStringLiteral("['a;b *?[$(c)]\\n']");
}

void UninstallResolvingTest::asksForInstalledPackages()
{
    QFETCH(QStringList, names);
    QFETCH(QString, logged);
    QFETCH(QString, asked);

    make(names)->start();
    QVERIFY(happens(QStringList(startLine(logged))
                    + m_packageKit->calls(0, QStringLiteral("Resolve(uint64 4, %1)").arg(asked))));
}

void UninstallResolvingTest::succeedsWhenNothingIsInstalled_data()
{
    QTest::addColumn<PackageKit::Transaction::Exit>("exit");
    QTest::newRow("success") << Transaction::ExitSuccess;
    QTest::newRow("failed") << Transaction::ExitFailed;
    QTest::newRow("cancelled") << Transaction::ExitCancelled;
    QTest::newRow("unknown") << Transaction::ExitUnknown;
}

void UninstallResolvingTest::succeedsWhenNothingIsInstalled()
{
    QFETCH(PackageKit::Transaction::Exit, exit);

    QVERIFY(startResolving());
    m_packageKit->tellEnd(0, exit);
    QVERIFY(happens(succeeding() + QStringList(deletion())));
}

void UninstallResolvingTest::removesWhateverIsReported()
{
    QVERIFY(startResolving());
    const QString odd = QStringLiteral("no identifier");
    m_packageKit->tellPackage(0, Id, QStringLiteral("a \"summary\""), Transaction::InfoAvailable);
    m_packageKit->tellPackage(0, odd, {}, Transaction::InfoUnknown);
    m_packageKit->tellPackage(0, QString());
    m_packageKit->tellPackage(0, odd);
    // Only the removal's progress counts.
    m_packageKit->tellProgress(0, Id, 50);
    QVERIFY(happens(
            {QStringLiteral("debug: Resolved: PackageKit::Transaction::InfoAvailable \"%1\" \"a \\\"summary\\\"\"")
                     .arg(Id),
             QStringLiteral("debug: Resolved: PackageKit::Transaction::InfoUnknown \"%1\" \"\"").arg(odd),
             resolvedLine(QString()), resolvedLine(odd)}));
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    const QString removal =
            QStringLiteral("RemovePackages(uint64 2, ['%1', '%2', '', '%2'], false, false)").arg(Id, odd);
    QVERIFY(happens(m_packageKit->calls(1, removal)));
}

void UninstallResolvingTest::removesAllInOneGo()
{
    QVERIFY(startResolving());
    m_packageKit->tellPackage(0, Id);
    m_packageKit->tellPackage(0, Other, QStringLiteral("the other"));
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    const QString removal = QStringLiteral("RemovePackages(uint64 2, ['%1', '%2'], false, false)").arg(Id, Other);
    QVERIFY(happens(QStringList{resolvedLine(Id), resolvedLine(Other, QStringLiteral("the other"))}
                    + m_packageKit->calls(1, removal)));
    m_packageKit->tellEnd(1, Transaction::ExitSuccess);
    QVERIFY(happens(QStringList(endLine(QStringLiteral("ExitSuccess"))) + succeeding() + QStringList(deletion())));
}

void UninstallResolvingTest::removesWhateverTheEnd_data()
{
    succeedsWhenNothingIsInstalled_data();
}

void UninstallResolvingTest::removesWhateverTheEnd()
{
    QFETCH(PackageKit::Transaction::Exit, exit);

    QVERIFY(startResolving());
    m_packageKit->tellPackage(0, Id);
    m_packageKit->tellEnd(0, exit, 4711);
    QVERIFY(happens(QStringList(resolvedLine(Id)) + m_packageKit->calls(1, Removal)));
}

void UninstallResolvingTest::failsOnError()
{
    QVERIFY(startResolving());
    m_packageKit->tellError(0, Transaction::ErrorPackageNotFound, Refusal);
    QVERIFY(happens(failing(QStringLiteral("Resolve"), QStringLiteral("ErrorPackageNotFound"), Refusal)
                    + QStringList(deletion())));
    m_packageKit->tellEnd(0, Transaction::ExitFailed);
    QVERIFY(happens({}));
}

// Required: the end comes after the failure and before the deletion that the
// failure has scheduled.
void UninstallResolvingTest::failsAndSucceedsWhenTheEndIsQueued()
{
    QVERIFY(startResolving());
    m_packageKit->tellError(0, Transaction::ErrorInternalError, Refusal);
    m_packageKit->tellEnd(0, Transaction::ExitFailed);
    QVERIFY(PackageKitPeer::settle());
    QVERIFY(happens(failing(QStringLiteral("Resolve"), QStringLiteral("ErrorInternalError"), Refusal) + succeeding()
                    + QStringList(deletion())));
}

void UninstallResolvingTest::failsAndRemovesWhenTheEndIsQueued_data()
{
    QTest::addColumn<bool>("errorFirst");
    QTest::newRow("error after the package") << false;
    QTest::newRow("error before the package") << true;
}

// Returns what comes of the two.
QStringList UninstallResolvingTest::tellPackageAndError(bool errorFirst)
{
    const QStringList resolved(resolvedLine(Id));
    const QStringList failed = failing(QStringLiteral("Resolve"), QStringLiteral("ErrorInternalError"), Refusal);
    if (errorFirst) {
        m_packageKit->tellError(0, Transaction::ErrorInternalError, Refusal);
        m_packageKit->tellPackage(0, Id);
        return failed + resolved;
    }
    m_packageKit->tellPackage(0, Id);
    m_packageKit->tellError(0, Transaction::ErrorInternalError, Refusal);
    return resolved + failed;
}

// Required: the removal begins, and nobody is left who could report its outcome.
void UninstallResolvingTest::failsAndRemovesWhenTheEndIsQueued()
{
    QFETCH(bool, errorFirst);

    QVERIFY(startResolving());
    const QStringList told = tellPackageAndError(errorFirst);
    m_packageKit->tellEnd(0, Transaction::ExitFailed);
    QVERIFY(PackageKitPeer::settle());
    QVERIFY(QTest::qWaitFor([this] { return m_journal.entries().contains(m_packageKit->call(1, Removal)); }));

    // PackageKit may hear of the removal before or after the deletion.
    QStringList entries = m_journal.entries();
    QCOMPARE(entries.mid(0, told.size()), told);
    for (const QString &call : m_packageKit->calls(1, Removal)) {
        QCOMPARE(entries.removeAll(call), 1);
    }
    QCOMPARE(entries, told + QStringList(deletion()));
    m_journal.clear();
    m_packageKit->tellEnd(1, Transaction::ExitSuccess);
    QVERIFY(happens({}));
}

void UninstallResolvingTest::failsForEachError()
{
    QVERIFY(startResolving());
    m_packageKit->tellError(0, Transaction::ErrorNoNetwork, QString());
    m_packageKit->tellError(0, Transaction::ErrorOom, Refusal);
    QVERIFY(PackageKitPeer::settle());
    QVERIFY(happens(failing(QStringLiteral("Resolve"), QStringLiteral("ErrorNoNetwork"), QString())
                    + failing(QStringLiteral("Resolve"), QStringLiteral("ErrorOom"), Refusal)
                    + QStringList(deletion())));
}

// What comes of the call of an absent daemon comes in one go.
void UninstallResolvingTest::failsWithoutPackageKit()
{
    m_packageKit.reset();
    make({QStringLiteral("a")})->start();
    const QString absent = QStringLiteral("The name org.freedesktop.PackageKit was not provided by any .service files");
    QVERIFY(happens(QStringList(startLine())
                    + failing(QStringLiteral("Resolve"), QStringLiteral("ErrorInternalError"), absent) + succeeding()
                    + QStringList(deletion())));
}

void UninstallResolvingTest::failsWhenPackageKitRefuses()
{
    m_packageKit->peer().answer(QStringLiteral("Resolve"),
                                PeerAnswer::error("org.freedesktop.PackageKit.Transaction.RefusedByPolicy", "Not you"));
    make({QStringLiteral("a")})->start();
    QVERIFY(happens(
            QStringList(startLine()) + m_packageKit->calls(0, QStringLiteral("Resolve(uint64 4, ['a'])"))
            + failing(QStringLiteral("Resolve"), QStringLiteral("ErrorInternalError"), QStringLiteral("Not you"))
            + succeeding() + QStringList(deletion())));
}

void UninstallResolvingTest::failsWhenPackageKitVanishes()
{
    QVERIFY(startResolving());
    m_packageKit.reset();
    QVERIFY(happens(failing(QStringLiteral("Resolve"), QStringLiteral("ErrorProcessKill"),
                            QStringLiteral("The PackageKit daemon has crashed"))
                    + succeeding() + QStringList(deletion())));
}

void UninstallResolvingTest::worksWhenPackageKitIsBack()
{
    m_packageKit.reset();
    make({QStringLiteral("a")})->start();
    QVERIFY(QTest::qWaitFor([this] { return m_journal.entries().contains(deletion()); }));
    m_journal.clear();
    m_packageKit.emplace(&m_journal);
    QVERIFY(startResolving());
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens(succeeding() + QStringList(deletion())));
}

void UninstallResolvingTest::keepsRemovalsApart()
{
    QVERIFY(startResolving());
    make({QStringLiteral("b")})->start();
    QVERIFY(happens(QStringList(startLine(QStringLiteral("(\"b\")")))
                    + m_packageKit->calls(1, QStringLiteral("Resolve(uint64 4, ['b'])"))));
    m_packageKit->tellError(0, Transaction::ErrorPackageNotFound, Refusal);
    QVERIFY(happens(failing(QStringLiteral("Resolve"), QStringLiteral("ErrorPackageNotFound"), Refusal)
                    + QStringList(deletion())));
    m_packageKit->tellPackage(1, QStringLiteral("b;1;;"));
    m_packageKit->tellEnd(1, Transaction::ExitSuccess);
    QVERIFY(happens(QStringList(resolvedLine(QStringLiteral("b;1;;")))
                    + m_packageKit->calls(2, QStringLiteral("RemovePackages(uint64 2, ['b;1;;'], false, false)"))));
}

VELMORA_TEST(UninstallResolvingTest, Gui)

#include "tst_uninstallresolving.moc"
