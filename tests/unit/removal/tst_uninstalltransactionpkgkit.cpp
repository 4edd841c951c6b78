// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "removalfixture.h"
#include "testrunner.h"
#include "uninstalltransactionpkgkit.h"

#include <QMetaEnum>

using Package::UninstallTransactionPkgKit;
using PackageKit::Transaction;

namespace {

// How far a removal is. The number is that of PackageKit's transaction.
enum Phase { NotStarted = -1, Resolving, Removing };

constexpr int NoExit = -1;

const QString Id = "a;1-1;noarch;installed"_s;
const QString Other = "a;1-1;i686;installed"_s;
const QString Details = "No.\nReally \"not\"."_s;
const QString Resolve = "Resolve(uint64 4, ['a'])"_s;
const QString Remove = "RemovePackages(uint64 2, ['a;1-1;noarch;installed'], false, false)"_s;
const PeerAnswer Refusal = PeerAnswer::error("org.freedesktop.PackageKit.Transaction.RefusedByPolicy", "Not you");

const QString StartLine = "debug: UninstallTransactionPkgKit::start: (\"a\")"_s;
const QString Deletion = "debug: deleting UninstallTransactionPkgKit"_s;
const QStringList Success{"success"_s, "finished"_s};
const QStringList Cancelled{"failure \"cancelled\""_s, "finished"_s};

QString quoted(const QString &text)
{
    QString result;
    QDebug(&result).nospace() << text;
    return result;
}

QString resolvedLine(const QString &id, const QString &summary = {})
{
    return "debug: Resolved: PackageKit::Transaction::InfoInstalled \"%1\" \"%2\""_s.arg(id, summary);
}

QString endLine(const QString &exit, uint runtime = 0)
{
    return "debug: slotUninstallFinished: (\"a\") PackageKit::Transaction::%1 %2"_s.arg(exit).arg(runtime);
}

QStringList failure(int phase, const QString &error, const QString &details = Details)
{
    return {"debug: %1 Error: (\"a\") PackageKit::Transaction::%2 %3"_s.arg(
                    phase == Resolving ? "Resolve"_s : "Uninstall"_s, error, quoted(details)),
            "debug: void Package::UninstallTransactionPkgKit::giveUp(const QString&) "_s + quoted(details),
            "failure "_s + quoted(details), "finished"_s};
}

}

/** Removals through PackageKit, which finds out what is installed by the names and then removes that. */
class UninstallTransactionPkgKitTest : public RemovalFixture
{
    Q_OBJECT

private:
    UninstallTransactionPkgKit *make(const QStringList &names, bool autoremove = false)
    {
        const auto removal = new UninstallTransactionPkgKit(names, autoremove);
        connect(removal, &Package::Transaction::progress, this,
                [this](int value) { note("progress %1"_s.arg(value)); });
        connect(removal, &Package::Transaction::failure, this,
                [this](const QString &details) { note("failure "_s + quoted(details)); });
        connect(removal, &Package::Transaction::success, this, [this] { note("success"_s); });
        connect(removal, &Package::Transaction::finished, this, [this] { note("finished"_s); });
        return removal;
    }

    // A removal of the package "a" that has come so far; null when it has not.
    UninstallTransactionPkgKit *makeUntil(int phase, bool autoremove = false)
    {
        const auto removal = make({"a"_s}, autoremove);
        if (phase == NotStarted) {
            return removal;
        }
        removal->start();
        if (!happens({StartLine, m_packageKit->calls(0, Resolve)})) {
            return nullptr;
        }
        if (phase == Resolving) {
            return removal;
        }
        m_packageKit->tellPackage(0, Id);
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        const QString call = "RemovePackages(uint64 2, ['%1'], false, %2)"_s.arg(Id, autoremove ? "true"_s : "false"_s);
        return happens({resolvedLine(Id), m_packageKit->calls(1, call)}) ? removal : nullptr;
    }

private Q_SLOTS:
    void startsNothingByItself()
    {
        const auto removal = make({"a"_s});
        QVERIFY(happens({}));
        delete removal;
        QVERIFY(happens({Deletion}));
    }

    void asksForInstalledPackages_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QString>("logged");
        QTest::addColumn<QString>("asked");

        QTest::newRow("one") << QStringList("a"_s) << R"("a")"_s << "['a']"_s;
        QTest::newRow("two, in their order") << QStringList{"b"_s, "a"_s} << R"("b", "a")"_s << "['b', 'a']"_s;
        QTest::newRow("none") << QStringList() << ""_s << "@as []"_s;
        QTest::newRow("empty") << QStringList(QString()) << R"("")"_s << "['']"_s;
        QTest::newRow("no RPM name") << QStringList("a;b *?[$(c)]\n"_s) << R"("a;b *?[$(c)]\n")"_s
                                     << R"(['a;b *?[$(c)]\n'])"_s;
    }

    void asksForInstalledPackages()
    {
        QFETCH(QStringList, names);
        QFETCH(QString, logged);
        QFETCH(QString, asked);
        make(names)->start();
        QVERIFY(happens({"debug: UninstallTransactionPkgKit::start: (%1)"_s.arg(logged),
                         m_packageKit->calls(0, "Resolve(uint64 4, %1)"_s.arg(asked))}));
    }

    void goesByPackagesAndNotByTheExit_data()
    {
        QTest::addColumn<PackageKit::Transaction::Exit>("exit");
        QTest::newRow("success") << Transaction::ExitSuccess;
        QTest::newRow("failed") << Transaction::ExitFailed;
        QTest::newRow("cancelled") << Transaction::ExitCancelled;
        QTest::newRow("unknown") << Transaction::ExitUnknown;
    }

    // Known behaviour 18.
    void goesByPackagesAndNotByTheExit()
    {
        QFETCH(PackageKit::Transaction::Exit, exit);
        QVERIFY(makeUntil(Resolving));
        m_packageKit->tellEnd(0, exit);
        QVERIFY(happens({Success, Deletion}));

        make({"a"_s})->start();
        QVERIFY(happens({StartLine, m_packageKit->calls(1, Resolve)}));
        m_packageKit->tellPackage(1, Id);
        m_packageKit->tellEnd(1, exit, 4711);
        QVERIFY(happens({resolvedLine(Id), m_packageKit->calls(2, Remove)}));
    }

    void removesAllThatIsReported()
    {
        QVERIFY(makeUntil(Resolving));
        const QString odd = "no identifier"_s;
        m_packageKit->tellPackage(0, Id, "a \"summary\""_s, Transaction::InfoAvailable);
        m_packageKit->tellPackage(0, odd, {}, Transaction::InfoUnknown);
        m_packageKit->tellPackage(0, QString());
        m_packageKit->tellPackage(0, odd);
        m_packageKit->tellPackage(0, Other, "the other"_s);
        // Only the progress of the removal itself counts.
        m_packageKit->tellProgress(0, Id, 50);
        const QString line = "debug: Resolved: PackageKit::Transaction::%1 \"%2\" \"%3\""_s;
        QVERIFY(happens({line.arg("InfoAvailable"_s, Id, "a \\\"summary\\\""_s),
                         line.arg("InfoUnknown"_s, odd, QString()), resolvedLine(QString()), resolvedLine(odd),
                         resolvedLine(Other, "the other"_s)}));
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        const QString call = "RemovePackages(uint64 2, ['%1', '%2', '', '%2', '%3'], false, false)"_s;
        QVERIFY(happens({m_packageKit->calls(1, call.arg(Id, odd, Other))}));
        m_packageKit->tellEnd(1, Transaction::ExitSuccess);
        QVERIFY(happens({endLine("ExitSuccess"_s), Success, Deletion}));
    }

    void removes_data()
    {
        QTest::addColumn<bool>("autoremove");
        QTest::newRow("the package alone") << false;
        QTest::newRow("with the packages that only it needs") << true;
    }

    void removes()
    {
        QFETCH(bool, autoremove);
        QVERIFY(makeUntil(Removing, autoremove));
        // A package that PackageKit reports while it removes is not one that was found.
        m_packageKit->tellPackage(1, Id);
        QVERIFY(happens({}));
        m_packageKit->tellEnd(1, Transaction::ExitSuccess, 4711);
        QVERIFY(happens({endLine("ExitSuccess"_s, 4711), Success, Deletion}));
    }

    void passesProgressOn()
    {
        QVERIFY(makeUntil(Removing));
        for (const uint percentage : {0u, 50u, 100u, 101u, 4000000u}) {
            m_packageKit->tellProgress(1, "other;1;;"_s, percentage);
            m_packageKit->tellProgress(1, Id, percentage);
            const QString entry = "progress %1"_s.arg(percentage);
            QVERIFY(happens({entry, entry}));
        }
    }

    void reportsNoEndWithoutAnError_data()
    {
        QTest::addColumn<PackageKit::Transaction::Exit>("exit");
        const QMetaEnum exits = QMetaEnum::fromType<Transaction::Exit>();
        for (int i = 0; i < exits.keyCount(); ++i) {
            if (exits.value(i) != Transaction::ExitSuccess) {
                QTest::newRow(exits.key(i)) << static_cast<Transaction::Exit>(exits.value(i));
            }
        }
    }

    // Known behaviour 20.
    void reportsNoEndWithoutAnError()
    {
        QFETCH(PackageKit::Transaction::Exit, exit);
        QVERIFY(makeUntil(Removing));
        m_packageKit->tellEnd(1, exit, 7);
        QVERIFY(happens({endLine(QString::fromLatin1(QTest::currentDataTag()), 7), Deletion}));
    }

    void failsOnError_data()
    {
        QTest::addColumn<int>("phase");
        QTest::addColumn<int>("exit");
        QTest::addColumn<QStringList>("end");
        constexpr int Failed = Transaction::ExitFailed;
        constexpr int Succeeded = Transaction::ExitSuccess;
        QTest::newRow("resolving") << int(Resolving) << NoExit << QStringList();
        QTest::newRow("resolving, failed") << int(Resolving) << Failed << Success;
        QTest::newRow("removing") << int(Removing) << NoExit << QStringList();
        QTest::newRow("removing, failed") << int(Removing) << Failed << QStringList(endLine("ExitFailed"_s));
        QTest::newRow("removing, succeeded")
                << int(Removing) << Succeeded << QStringList(endLine("ExitSuccess"_s)) + Success;
    }

    // An end that is queued counts, since it comes before the deletion that the failure has scheduled. A later one
    // does not. Known behaviour 27, 28.
    void failsOnError()
    {
        QFETCH(int, phase);
        QFETCH(int, exit);
        QFETCH(QStringList, end);
        QVERIFY(makeUntil(phase));
        m_packageKit->tellError(phase, Transaction::ErrorPackageNotFound, Details);
        if (exit != NoExit) {
            m_packageKit->tellEnd(phase, static_cast<Transaction::Exit>(exit));
        }
        QVERIFY(PackageKitPeer::settle());
        QVERIFY(happens({failure(phase, "ErrorPackageNotFound"_s), end, Deletion}));
        m_packageKit->tellEnd(phase, Transaction::ExitFailed);
        QVERIFY(happens({}));
    }

    void removesInSpiteOfAnError_data()
    {
        QTest::addColumn<bool>("errorFirst");
        QTest::newRow("error after the package") << false;
        QTest::newRow("error before the package") << true;
    }

    // Nobody reports the outcome of this removal. Known behaviour 27.
    void removesInSpiteOfAnError()
    {
        QFETCH(bool, errorFirst);
        QVERIFY(makeUntil(Resolving));
        if (!errorFirst) {
            m_packageKit->tellPackage(0, Id);
        }
        m_packageKit->tellError(0, Transaction::ErrorInternalError, Details);
        if (errorFirst) {
            m_packageKit->tellPackage(0, Id);
        }
        m_packageKit->tellEnd(0, Transaction::ExitFailed);
        QVERIFY(PackageKitPeer::settle());
        const QStringList failed = failure(Resolving, "ErrorInternalError"_s);
        const QStringList resolved(resolvedLine(Id));
        // PackageKit may receive the calls before or after the deletion.
        QVERIFY(happens({errorFirst ? failed + resolved : resolved + failed, Deletion},
                        m_packageKit->calls(1, Remove)));
        m_packageKit->tellEnd(1, Transaction::ExitSuccess);
        QVERIFY(happens({}));
    }

    void failsForEachError()
    {
        QVERIFY(makeUntil(Resolving));
        m_packageKit->tellError(0, Transaction::ErrorNoNetwork, QString());
        m_packageKit->tellError(0, Transaction::ErrorOom, Details);
        QVERIFY(PackageKitPeer::settle());
        QVERIFY(happens(
                {failure(Resolving, "ErrorNoNetwork"_s, QString()), failure(Resolving, "ErrorOom"_s), Deletion}));
    }

    // Known behaviour 25.
    void failsAndSucceedsWithoutPackageKit()
    {
        m_packageKit.reset();
        make({"a"_s})->start();
        const QString absent = "The name org.freedesktop.PackageKit was not provided by any .service files"_s;
        QVERIFY(happens({StartLine, failure(Resolving, "ErrorInternalError"_s, absent), Success, Deletion}));

        m_packageKit.emplace(&m_journal);
        QVERIFY(makeUntil(Resolving));
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        QVERIFY(happens({Success, Deletion}));
    }

    // Known behaviour 25.
    void failsAndSucceedsWhenResolvingIsRefused()
    {
        m_packageKit->peer().answer("Resolve"_s, Refusal);
        make({"a"_s})->start();
        QVERIFY(happens({StartLine, m_packageKit->calls(0, Resolve),
                         failure(Resolving, "ErrorInternalError"_s, "Not you"_s), Success, Deletion}));
    }

    void failsWhenRemovingIsRefused()
    {
        QVERIFY(makeUntil(Resolving));
        m_packageKit->peer().answer("RemovePackages"_s, Refusal);
        m_packageKit->tellPackage(0, Id);
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        QVERIFY(happens({resolvedLine(Id), m_packageKit->calls(1, Remove),
                         failure(Removing, "ErrorInternalError"_s, "Not you"_s), endLine("ExitFailed"_s), Deletion}));
    }

    void failsWhenPackageKitVanishes_data()
    {
        QTest::addColumn<int>("phase");
        QTest::addColumn<QStringList>("end");
        QTest::newRow("resolving") << int(Resolving) << Success;
        QTest::newRow("removing") << int(Removing) << QStringList(endLine("ExitKilled"_s));
    }

    // Known behaviour 25.
    void failsWhenPackageKitVanishes()
    {
        QFETCH(int, phase);
        QFETCH(QStringList, end);
        QVERIFY(makeUntil(phase));
        m_packageKit.reset();
        QVERIFY(happens({failure(phase, "ErrorProcessKill"_s, "The PackageKit daemon has crashed"_s), end, Deletion}));
    }

    void keepsRemovalsApart()
    {
        QVERIFY(makeUntil(Resolving));
        make({"b"_s})->start();
        QVERIFY(happens({"debug: UninstallTransactionPkgKit::start: (\"b\")"_s,
                         m_packageKit->calls(1, "Resolve(uint64 4, ['b'])"_s)}));
        m_packageKit->tellError(0, Transaction::ErrorPackageNotFound, Details);
        QVERIFY(happens({failure(Resolving, "ErrorPackageNotFound"_s), Deletion}));
        m_packageKit->tellPackage(1, "b;1;;"_s);
        m_packageKit->tellEnd(1, Transaction::ExitSuccess);
        QVERIFY(happens({resolvedLine("b;1;;"_s),
                         m_packageKit->calls(2, "RemovePackages(uint64 2, ['b;1;;'], false, false)"_s)}));
    }

    void cancels_data()
    {
        QTest::addColumn<int>("phase");
        QTest::newRow("not started") << int(NotStarted);
        QTest::newRow("resolving") << int(Resolving);
        QTest::newRow("removing") << int(Removing);
    }

    // PackageKit goes on with its work, and its signals change nothing.
    void cancels()
    {
        QFETCH(int, phase);
        Package::Transaction *const removal = makeUntil(phase);
        QVERIFY(removal);
        QVERIFY(!removal->canCancel());
        removal->cancel();
        QVERIFY(happens({Cancelled, Deletion}));
        m_packageKit->tellPackage(0, Id);
        m_packageKit->tellEnd(0, Transaction::ExitSuccess);
        m_packageKit->tellProgress(1, Id, 50);
        m_packageKit->tellEnd(1, Transaction::ExitSuccess);
        QVERIFY(happens({}));
    }

    void cancelsAndSucceedsWhenTheEndIsQueued()
    {
        Package::Transaction *const removal = makeUntil(Removing);
        QVERIFY(removal);
        m_packageKit->tellEnd(1, Transaction::ExitSuccess);
        // The end is in the queue of the event loop then, and the deletion comes behind it.
        QVERIFY(PackageKitPeer::arrives());
        removal->cancel();
        QVERIFY(happens({Cancelled, endLine("ExitSuccess"_s), Success, Deletion}));
    }

    // The removal still exists when it emits its last signal, and a slot may start another one.
    void reportsFromWithinItsSignals()
    {
        const auto removal = makeUntil(Removing);
        QVERIFY(removal);
        connect(removal, &Package::Transaction::finished, this, [this] { make({"b"_s})->start(); });
        m_packageKit->tellEnd(1, Transaction::ExitSuccess);
        QVERIFY(waitForEntry(m_packageKit->call(2, "Resolve(uint64 4, ['b'])"_s)));
        const QStringList ended{endLine("ExitSuccess"_s), "success"_s, "finished"_s,
                                "debug: UninstallTransactionPkgKit::start: (\"b\")"_s};
        QCOMPARE(m_journal.entries().mid(0, 4), ended);
        QCOMPARE(m_journal.entries().count(Deletion), 1);
    }
};

VELMORA_TEST(UninstallTransactionPkgKitTest, Anywhere, Gui)

#include "tst_uninstalltransactionpkgkit.moc"
