// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "catalogues.h"

#include <QCoreApplication>
#include <QTest>

/** The installed catalogues, found by locale. */
class CataloguesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsCatalogueOfLocale_data();
    void findsCatalogueOfLocale();
    void speaksEnglishOtherwise_data();
    void speaksEnglishOtherwise();
};

void CataloguesTest::findsCatalogueOfLocale_data()
{
    QTest::addColumn<QString>("install");

    QTest::newRow("de_DE") << QStringLiteral("Installieren");
    QTest::newRow("de_AT") << QStringLiteral("Installieren");
    QTest::newRow("fi_FI") << QStringLiteral("Asenna");
    QTest::newRow("fr_FR") << QStringLiteral("Installer");
    QTest::newRow("fr_CA") << QStringLiteral("Installer");
    QTest::newRow("es_ES") << QStringLiteral("Instalar");
    QTest::newRow("es_MX") << QStringLiteral("Instalar");
    QTest::newRow("ru_RU") << QStringLiteral("Установить");
    QTest::newRow("zh_CN") << QStringLiteral("安装");
    QTest::newRow("ar_EG") << QStringLiteral("تثبيت");
    QTest::newRow("ar") << QStringLiteral("تثبيت");
}

void CataloguesTest::findsCatalogueOfLocale()
{
    QFETCH(QString, install);

    const Catalogues catalogues{QLocale(QLatin1String(QTest::currentDataTag()))};

    QVERIFY(catalogues.hasOwn());
    QCOMPARE(qtTrId("installationhandler-install"), install);
}

void CataloguesTest::speaksEnglishOtherwise_data()
{
    QTest::addColumn<QLocale>("locale");

    QTest::newRow("C") << QLocale::c();
    QTest::newRow("English") << QLocale(QStringLiteral("en_GB"));
    QTest::newRow("no catalogue") << QLocale(QStringLiteral("nb_NO"));
    QTest::newRow("other script") << QLocale(QStringLiteral("zh_TW"));
}

void CataloguesTest::speaksEnglishOtherwise()
{
    QFETCH(QLocale, locale);

    const Catalogues catalogues(locale);

    QVERIFY(!catalogues.hasOwn());
    QCOMPARE(qtTrId("installationhandler-install"), QStringLiteral("Install"));
    QCOMPARE(qtTrId("installationhandler-user-aborted"), QStringLiteral("The user cancelled the installation"));
}

QTEST_GUILESS_MAIN(CataloguesTest)

#include "tst_catalogues.moc"
