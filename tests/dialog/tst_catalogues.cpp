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
        QTest::addColumn<QString>("language");

        for (const char *locale :
             {"ar",         "ar_EG", "bg_BG", "bn_BD", "bn_IN", "ca_ES", "cs_CZ", "da_DK", "de_AT", "de_DE",
              "el_GR",      "es_ES", "es_MX", "et_EE", "fa_AF", "fa_IR", "fi_FI", "fr_CH", "fr_FR", "he_IL",
              "hi_IN",      "hr_HR", "hu_HU", "id_ID", "it_IT", "ja_JP", "ko_KR", "lt_LT", "lv_LV", "ms_MY",
              "nb_NO",      "nl_BE", "nl_NL", "pl_PL", "pt_AO", "pt_PT", "ro_RO", "ru_RU", "sk_SK", "sl_SI",
              "sr_Latn_RS", "sr_RS", "sv_SE", "th_TH", "tr_TR", "uk_UA", "vi_VN"}) {
            QTest::newRow(locale) << QString::fromLatin1(locale).section(QLatin1Char('_'), 0, 0);
        }
        for (const char *locale : {"en_GB", "fr_CA", "pt_BR", "zh_CN", "zh_TW"}) {
            QTest::newRow(locale) << QString::fromLatin1(locale);
        }
        for (const char *locale : {"C", "en_US", "nn_NO", "ur_PK", "zh_HK"}) {
            QTest::newRow(locale) << QString();
        }
    }

    void findsCatalogueOfLocale()
    {
        QFETCH(QString, language);

        const Catalogues catalogues{QLocale(QLatin1String(QTest::currentDataTag()))};

        QCOMPARE(catalogues.ownLanguage(), language);
        QCOMPARE(qtTrId("installationhandler-user-aborted") == QLatin1String("The user cancelled the installation"),
                 language.isEmpty() || language == QLatin1String("en_GB"));
    }
};

QTEST_GUILESS_MAIN(CataloguesTest)

#include "tst_catalogues.moc"
