// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "ownersearchscene.h"

#include "testrunner.h"

#include <memory>

using PackageKit::Transaction;

namespace {

const QString Launcher = OwnerSearchScene::launcher();
const QString Id = QStringLiteral("a;1-1;noarch;installed");
const QByteArray Android = "[Desktop Entry]\nX-zindro-apkfile=/data/app.apk\n";

const QString OwnerA = QStringLiteral("owner a");
const QString Apk = QStringLiteral("apk /data/app.apk of /usr/share/applications/app.desktop");
const QString Deleted = QStringLiteral("deleted");

}

/** Searches that fail, or never end. */
class OwnerSearchFailureTest : public OwnerSearchScene
{
    Q_OBJECT

private Q_SLOTS:
    void goesOnAfterAnError();
    void countsOwnersBeforeAnError();
    void livesWithoutAnEnd();
    void doesWithoutPackageKit();
    void noticesThatPackageKitVanishes();
    void belongsToItsParent();
};

void OwnerSearchFailureTest::goesOnAfterAnError()
{
    m_launcher->write(Android);
    resolve();
    QVERIFY(searches(QStringLiteral("/data/app.apk")));
    m_packageKit->tellError(0, Transaction::ErrorCannotGetLock, QStringLiteral("no \"lock\""));
    QVERIFY(happens({QStringLiteral("warning: Error on resolving desktop file owner "
                                    "PackageKit::Transaction::ErrorCannotGetLock \"no \\\"lock\\\"\"")}));
    m_packageKit->tellEnd(0, Transaction::ExitFailed);
    QVERIFY(happens({Apk, Deleted}));
}

void OwnerSearchFailureTest::countsOwnersBeforeAnError()
{
    m_launcher->write(Android);
    resolve();
    QVERIFY(searches(QStringLiteral("/data/app.apk")));
    m_packageKit->tellPackage(0, Id);
    m_packageKit->tellError(0, Transaction::ErrorOom, QString());
    m_packageKit->tellEnd(0, Transaction::ExitFailed);
    QVERIFY(happens({OwnerA,
                     QStringLiteral("warning: Error on resolving desktop file owner "
                                    "PackageKit::Transaction::ErrorOom \"\""),
                     Deleted}));
}

void OwnerSearchFailureTest::livesWithoutAnEnd()
{
    const std::unique_ptr<DesktopOwnerResolver> resolver(resolve());
    QVERIFY(searches(Launcher));
    m_packageKit->tellPackage(0, Id);
    m_packageKit->tellError(0, Transaction::ErrorOom, QString());
    m_packageKit->tellPackage(0, Id);
    QVERIFY(happens({OwnerA,
                     QStringLiteral("warning: Error on resolving desktop file owner "
                                    "PackageKit::Transaction::ErrorOom \"\""),
                     OwnerA}));
}

void OwnerSearchFailureTest::doesWithoutPackageKit()
{
    m_packageKit.reset();
    m_launcher->write(Android);
    resolve();
    QVERIFY(happens({QStringLiteral("warning: Error on resolving desktop file owner "
                                    "PackageKit::Transaction::ErrorInternalError \"The name "
                                    "org.freedesktop.PackageKit was not provided by any .service files\""),
                     Apk, Deleted}));
}

void OwnerSearchFailureTest::noticesThatPackageKitVanishes()
{
    resolve();
    QVERIFY(searches(Launcher));
    m_packageKit.reset();
    QVERIFY(happens({QStringLiteral("warning: Error on resolving desktop file owner "
                                    "PackageKit::Transaction::ErrorProcessKill "
                                    "\"The PackageKit daemon has crashed\""),
                     Deleted}));
}

void OwnerSearchFailureTest::belongsToItsParent()
{
    QObject parent;
    QCOMPARE(resolve(&parent)->parent(), &parent);
    QVERIFY(searches(Launcher));
    m_packageKit->tellEnd(0, Transaction::ExitSuccess);
    QVERIFY(happens({Deleted}));
    QVERIFY(parent.children().isEmpty());
}

VELMORA_TEST(OwnerSearchFailureTest, Gui)

#include "tst_ownersearchfailure.moc"
