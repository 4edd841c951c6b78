// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"

#include <QCoreApplication>
#include <QTest>

/** The installed catalogues, found by locale; engineering English for all other locales. */
class CataloguesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsCatalogueOfLocale_data()
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
        for (const char *locale : {"C", "en_GB", "nb_NO", "zh_TW"}) {
            QTest::newRow(locale) << QStringLiteral("Install");
        }
    }

    void findsCatalogueOfLocale()
    {
        QFETCH(QString, install);

        const Catalogues catalogues{QLocale(QLatin1String(QTest::currentDataTag()))};

        const bool english = install == QLatin1String("Install");
        QCOMPARE(catalogues.hasOwn(), !english);
        QCOMPARE(qtTrId("installationhandler-install"), install);
        QCOMPARE(qtTrId("installationhandler-user-aborted") == QLatin1String("The user cancelled the installation"),
                 english);
    }
};

QTEST_GUILESS_MAIN(CataloguesTest)

#include "tst_catalogues.moc"
