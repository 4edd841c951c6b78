// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "installationerror.h"
#include "texts.h"

#include <QTranslator>
#include <QtTest>

class TestInstallationError : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void describesWithoutCatalogue_data();
    void describesWithoutCatalogue();
    void describesWithCatalogue_data();
    void describesWithCatalogue();
    void asksTheCatalogueInstalledLast();
};

void TestInstallationError::describesWithoutCatalogue_data()
{
    QTest::addColumn<QString>("errorName");
    QTest::addColumn<QString>("description");
    const auto addRow = [](const char *name, const char *description) {
        QTest::newRow(*name ? name : "no name") << QString::fromUtf8(name) << QString::fromUtf8(description);
    };
    addRow("a.b.Failed", "zarn_installation_error_desc_Failed (code: Failed)");
    addRow("a.b.Error.NoSpace", "zarn_installation_error_desc_NoSpace (code: NoSpace)");
    addRow("Timeout", "zarn_installation_error_desc_Timeout (code: Timeout)");
    addRow("a.b.", "zarn_installation_error_desc_ (code: )");
    addRow("", "zarn_installation_error_desc_ (code: )");
    addRow(".", "zarn_installation_error_desc_ (code: )");
    addRow("...", "zarn_installation_error_desc_ (code: )");
    addRow(".Failed", "zarn_installation_error_desc_Failed (code: Failed)");
    addRow("a..Failed", "zarn_installation_error_desc_Failed (code: Failed)");
    addRow("org.freedesktop.DBus.Error.NoReply", "zarn_installation_error_desc_NoReply (code: NoReply)");
    addRow("org.freedesktop.DBus.Error.ServiceUnknown",
           "zarn_installation_error_desc_ServiceUnknown (code: ServiceUnknown)");
    addRow("a.b c-d_e", "zarn_installation_error_desc_b c-d_e (code: b c-d_e)");
    addRow("a.Zu_groß_文", "zarn_installation_error_desc_Zu_groß_文 (code: Zu_groß_文)");
    addRow("a.b．c", "zarn_installation_error_desc_b．c (code: b．c)");
    // The identifier is the description here, with the place that the code has in it.
    addRow("a.x%1y", "zarn_installation_error_desc_xx%1yy (code: %3)");

    const QString code(10000, QLatin1Char('x'));
    QTest::newRow("a long name") << QLatin1String("a.") + code
                                 << QStringLiteral("zarn_installation_error_desc_%1 (code: %1)").arg(code);
}

void TestInstallationError::describesWithoutCatalogue()
{
    QFETCH(QString, errorName);
    QTEST(InstallationError::describe(errorName), "description");
}

void TestInstallationError::describesWithCatalogue_data()
{
    QTest::addColumn<QString>("errorName");
    QTest::addColumn<QString>("description");
    const auto addRow = [](const char *name, const char *description) {
        QTest::newRow(*name ? name : "no name") << QString::fromUtf8(name) << QString::fromUtf8(description);
    };
    addRow("a.b.Error.NoSpace", "No space left on the device (code: NoSpace)");
    addRow("NoSpace", "No space left on the device (code: NoSpace)");
    addRow("a.b.nospace", "zarn_installation_error_desc_nospace (code: nospace)");
    addRow("a.NoSpace.Failed", "zarn_installation_error_desc_Failed (code: Failed)");
    addRow("a.b.", "Nobody knows why (code: )");
    addRow("", "Nobody knows why (code: )");
    addRow("a.Zu_groß_文", "Dateien sind zu groß (code: Zu_groß_文)");
    addRow("a.Lines", "First line\nsecond line (code: Lines)");
    addRow("a.Percent", "100% full, %n files (code: Percent)");
    // A place of its own with a number below 3 takes the code away from the pattern's.
    addRow("a.One", "Place One for it (code: %3)");
    addRow("a.Two", "Place Two for it (code: %3)");
    addRow("a.Three", "Place Three for it (code: Three)");
    addRow("a.Four", "Place %4 for it (code: Four)");
}

void TestInstallationError::describesWithCatalogue()
{
    QFETCH(QString, errorName);
    QTranslator catalogue;
    QVERIFY(catalogue.load(QStringLiteral(ZARN_CATALOGUE)));
    QVERIFY(QCoreApplication::installTranslator(&catalogue));
    QTEST(InstallationError::describe(errorName), "description");
}

void TestInstallationError::asksTheCatalogueInstalledLast()
{
    QTranslator engineering;
    QVERIFY(engineering.load(QStringLiteral(ZARN_CATALOGUE)));
    QVERIFY(QCoreApplication::installTranslator(&engineering));
    const Texts locale({{QStringLiteral("zarn_installation_error_desc_NoSpace"), QStringLiteral("Platz fehlt")}});
    QCOMPARE(InstallationError::describe(QStringLiteral("a.NoSpace")), QStringLiteral("Platz fehlt (code: NoSpace)"));
    QCOMPARE(InstallationError::describe(QStringLiteral("a.")), QStringLiteral("Nobody knows why (code: )"));
}

QTEST_GUILESS_MAIN(TestInstallationError)

#include "tst_installationerror.moc"
