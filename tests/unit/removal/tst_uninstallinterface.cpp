// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "desktopownerresolver.h"
#include "methodsof.h"
#include "testrunner.h"
#include "uninstalltransactionpkgkit.h"

#include <QMetaEnum>
#include <QTest>

Q_DECLARE_METATYPE(const QMetaObject *)

/** The shape of the removal's classes, which other code can look into. */
class UninstallInterfaceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasMethods_data();
    void hasMethods();
    void hasNothingElse_data();
    void hasNothingElse();
    void registersEnumerations_data();
    void registersEnumerations();
    void isAbstract();
};

void UninstallInterfaceTest::hasMethods_data()
{
    QTest::addColumn<const QMetaObject *>("type");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<const QMetaObject *>("base");
    QTest::addColumn<QStringList>("methods");

    QTest::newRow("transaction") << &Package::Transaction::staticMetaObject << QByteArray("Package::Transaction")
                                 << &QObject::staticMetaObject
                                 << QStringList{QStringLiteral("signal progress(int value)"),
                                                QStringLiteral("signal failure(QString details)"),
                                                QStringLiteral("signal success()"),
                                                QStringLiteral("signal finished()")};
    QTest::newRow("removal through PackageKit")
            << &Package::UninstallTransactionPkgKit::staticMetaObject
            << QByteArray("Package::UninstallTransactionPkgKit") << &Package::Transaction::staticMetaObject
            << QStringList{
                       QStringLiteral(
                               "private slot slotResolveFinished(PackageKit::Transaction::Exit status, uint runtime)"),
                       QStringLiteral(
                               "private slot slotResolveError(PackageKit::Transaction::Error error, QString details)"),
                       QStringLiteral("private slot slotResolved(PackageKit::Transaction::Info info, QString pkgId, "
                                      "QString summary)"),
                       QStringLiteral("private slot slotUninstallFinished(PackageKit::Transaction::Exit status, "
                                      "uint runtime)"),
                       QStringLiteral("private slot slotUninstallError(PackageKit::Transaction::Error error, "
                                      "QString details)"),
                       QStringLiteral("private slot slotUninstallProgress(QString itemID, "
                                      "PackageKit::Transaction::Status status, uint percentage)")};
    QTest::newRow("owner search")
            << &DesktopOwnerResolver::staticMetaObject << QByteArray("DesktopOwnerResolver")
            << &QObject::staticMetaObject
            << QStringList{
                       QStringLiteral("signal ownerPackageFound(QString package)"),
                       QStringLiteral("signal ownerApkFound(QString desktopFile, QString apk)"),
                       QStringLiteral(
                               "private slot handleFinished(PackageKit::Transaction::Exit status, uint runtime)"),
                       QStringLiteral(
                               "private slot handleError(PackageKit::Transaction::Error error, QString details)"),
                       QStringLiteral("private slot handlePackage(PackageKit::Transaction::Info info, QString pkgId, "
                                      "QString summary)")};
}

void UninstallInterfaceTest::hasMethods()
{
    QFETCH(const QMetaObject *, type);
    QFETCH(QByteArray, name);
    QFETCH(const QMetaObject *, base);
    QFETCH(QStringList, methods);

    QCOMPARE(QByteArray(type->className()), name);
    QCOMPARE(type->superClass(), base);
    QCOMPARE(methodsOf(*type), methods);
}

void UninstallInterfaceTest::hasNothingElse_data()
{
    hasMethods_data();
}

void UninstallInterfaceTest::hasNothingElse()
{
    QFETCH(const QMetaObject *, type);

    QCOMPARE(type->propertyCount(), type->propertyOffset());
    QCOMPARE(type->classInfoCount(), type->classInfoOffset());
    QCOMPARE(type->enumeratorCount(), type->enumeratorOffset());
    QCOMPARE(type->constructorCount(), 0);
}

void UninstallInterfaceTest::registersEnumerations_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<int>("parameter");
    QTest::addColumn<QByteArray>("name");

    QTest::newRow("exit") << QByteArray("slotUninstallFinished(PackageKit::Transaction::Exit,uint)") << 0
                          << QByteArray("PackageKit::Transaction::Exit");
    QTest::newRow("status") << QByteArray("slotUninstallProgress(QString,PackageKit::Transaction::Status,uint)") << 1
                            << QByteArray("PackageKit::Transaction::Status");
    QTest::newRow("info") << QByteArray("slotResolved(PackageKit::Transaction::Info,QString,QString)") << 0
                          << QByteArray("PackageKit::Transaction::Info");
    QTest::newRow("error") << QByteArray("slotResolveError(PackageKit::Transaction::Error,QString)") << 0
                           << QByteArray("PackageKit::Transaction::Error");
}

// Not only as any type of that name: the debug stream and queued calls need the very type.
void UninstallInterfaceTest::registersEnumerations()
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

void UninstallInterfaceTest::isAbstract()
{
    QVERIFY(std::is_abstract_v<Package::Transaction>);
    QVERIFY((std::is_base_of_v<Package::Transaction, Package::UninstallTransactionPkgKit>));
}

VELMORA_TEST(UninstallInterfaceTest, Core)

#include "tst_uninstallinterface.moc"
