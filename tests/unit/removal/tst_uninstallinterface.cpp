// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopownerresolver.h"
#include "testrunner.h"
#include "uninstalltransactionpkgkit.h"

#include <type_traits>

Q_DECLARE_METATYPE(const QMetaObject *)

static_assert(std::is_abstract_v<Package::Transaction>);
static_assert(std::is_base_of_v<Package::Transaction, Package::UninstallTransactionPkgKit>);

/** The meta-objects of the removal's classes, which other code can look into. */
class UninstallInterfaceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasMethods_data()
    {
        QTest::addColumn<const QMetaObject *>("type");
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<const QMetaObject *>("base");
        QTest::addColumn<QStringList>("methods");

        QTest::newRow("transaction") << &Package::Transaction::staticMetaObject << "Package::Transaction"_b
                                     << &QObject::staticMetaObject
                                     << QStringList{"signal progress(int value)"_s, "signal failure(QString details)"_s,
                                                    "signal success()"_s, "signal finished()"_s};
        const QStringList uninstallSlots{
                "private slot slotResolveFinished(PackageKit::Transaction::Exit status, uint runtime)"_s,
                "private slot slotResolveError(PackageKit::Transaction::Error error, QString details)"_s,
                "private slot slotResolved(PackageKit::Transaction::Info info, QString pkgId, QString summary)"_s,
                "private slot slotUninstallFinished(PackageKit::Transaction::Exit status, uint runtime)"_s,
                "private slot slotUninstallError(PackageKit::Transaction::Error error, QString details)"_s,
                "private slot slotUninstallProgress(QString itemID, PackageKit::Transaction::Status status, "
                "uint percentage)"_s};
        QTest::newRow("removal through PackageKit")
                << &Package::UninstallTransactionPkgKit::staticMetaObject << "Package::UninstallTransactionPkgKit"_b
                << &Package::Transaction::staticMetaObject << uninstallSlots;
        const QStringList searchMethods{
                "signal ownerPackageFound(QString package)"_s,
                "signal ownerApkFound(QString desktopFile, QString apk)"_s,
                "private slot handleFinished(PackageKit::Transaction::Exit status, uint runtime)"_s,
                "private slot handleError(PackageKit::Transaction::Error error, QString details)"_s,
                "private slot handlePackage(PackageKit::Transaction::Info info, QString pkgId, QString summary)"_s};
        QTest::newRow("owner search") << &DesktopOwnerResolver::staticMetaObject << "DesktopOwnerResolver"_b
                                      << &QObject::staticMetaObject << searchMethods;
    }

    void hasMethods()
    {
        QFETCH(const QMetaObject *, type);
        QFETCH(QByteArray, name);
        QFETCH(const QMetaObject *, base);
        QFETCH(QStringList, methods);
        QCOMPARE(QByteArray(type->className()), name);
        QCOMPARE(type->superClass(), base);
        QCOMPARE(methodsOf(*type), methods);
        QCOMPARE(type->propertyCount(), type->propertyOffset());
        QCOMPARE(type->classInfoCount(), type->classInfoOffset());
        QCOMPARE(type->enumeratorCount(), type->enumeratorOffset());
        QCOMPARE(type->constructorCount(), 0);
    }

    void registersEnumerations_data()
    {
        QTest::addColumn<QByteArray>("slot");
        QTest::addColumn<int>("parameter");
        QTest::addColumn<QByteArray>("name");

        const QByteArray transaction = "PackageKit::Transaction::";
        QTest::newRow("exit") << "slotUninstallFinished(PackageKit::Transaction::Exit,uint)"_b << 0
                              << transaction + "Exit";
        QTest::newRow("status") << "slotUninstallProgress(QString,PackageKit::Transaction::Status,uint)"_b << 1
                                << transaction + "Status";
        QTest::newRow("info") << "slotResolved(PackageKit::Transaction::Info,QString,QString)"_b << 0
                              << transaction + "Info";
        QTest::newRow("error") << "slotResolveError(PackageKit::Transaction::Error,QString)"_b << 0
                               << transaction + "Error";
    }

    // A type that only has the same name is not enough for the debug stream and for queued calls.
    void registersEnumerations()
    {
        QFETCH(QByteArray, slot);
        QFETCH(int, parameter);
        QFETCH(QByteArray, name);
        const QMetaObject &type = Package::UninstallTransactionPkgKit::staticMetaObject;
        const int index = type.indexOfSlot(slot.constData());
        QVERIFY(index >= 0);
        const int id = type.method(index).parameterType(parameter);
        QVERIFY(id != QMetaType::UnknownType);
        QCOMPARE(QByteArray(QMetaType::typeName(id)), name);
        QCOMPARE(QMetaType::type(name.constData()), id);
        QVERIFY(QMetaType::typeFlags(id) & QMetaType::IsEnumeration);
    }
};

VELMORA_TEST(UninstallInterfaceTest, Anywhere, Core)

#include "tst_uninstallinterface.moc"
