// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "installationerror.h"

#include "testrunner.h"

namespace {

void addRow(const char *name, const char *description)
{
    QTest::newRow(*name ? name : "no name") << name << description;
}

}

/** Known behaviour 64, 65, 66. */
class InstallationErrorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void describesWithoutCatalogue_data()
    {
        QTest::addColumn<QString>("errorName");
        QTest::addColumn<QString>("description");
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
        addRow("a.b c-d_e", "zarn_installation_error_desc_b c-d_e (code: b c-d_e)");
        addRow("a.Zu_groß_文", "zarn_installation_error_desc_Zu_groß_文 (code: Zu_groß_文)");
        addRow("a.b．c", "zarn_installation_error_desc_b．c (code: b．c)");
        // The identifier is the description here, and receives the code.
        addRow("a.x%1y", "zarn_installation_error_desc_xx%1yy (code: %3)");

        const QString code(10000, QLatin1Char('x'));
        QTest::newRow("a long name") << "a."_s + code << "zarn_installation_error_desc_%1 (code: %1)"_s.arg(code);
    }

    void describesWithoutCatalogue()
    {
        QFETCH(QString, errorName);
        QTEST(InstallationError::describe(errorName), "description");
    }

    void describesWithCatalogue_data()
    {
        QTest::addColumn<QString>("errorName");
        QTest::addColumn<QString>("description");
        addRow("a.b.Error.NoSpace", "No space left on the device (code: NoSpace)");
        addRow("NoSpace", "No space left on the device (code: NoSpace)");
        addRow("a.b.nospace", "zarn_installation_error_desc_nospace (code: nospace)");
        addRow("a.NoSpace.Failed", "zarn_installation_error_desc_Failed (code: Failed)");
        addRow("a.b.", "Nobody knows why (code: )");
        addRow("", "Nobody knows why (code: )");
        addRow("a.Zu_groß_文", "Dateien sind zu groß (code: Zu_groß_文)");
        addRow("a.Lines", "First line\nsecond line (code: Lines)");
        addRow("a.Percent", "100% full, %n files (code: Percent)");
        // A placeholder with a number below 3 takes the code, which is missing from its own place then.
        addRow("a.One", "Place One for it (code: %3)");
        addRow("a.Two", "Place Two for it (code: %3)");
        addRow("a.Three", "Place Three for it (code: Three)");
        addRow("a.Four", "Place %4 for it (code: Four)");
    }

    void describesWithCatalogue()
    {
        QFETCH(QString, errorName);
        const Texts catalogue(m_catalogue);
        QTEST(InstallationError::describe(errorName), "description");
    }

    void asksTheCatalogueInstalledLast()
    {
        const Texts engineering(m_catalogue);
        const Texts locale({{"zarn_installation_error_desc_NoSpace"_s, "Platz fehlt"_s}});
        QCOMPARE(InstallationError::describe("a.NoSpace"_s), "Platz fehlt (code: NoSpace)"_s);
        QCOMPARE(InstallationError::describe("a."_s), "Nobody knows why (code: )"_s);
    }

private:
    const QHash<QString, QString> m_catalogue{
            {"zarn_installation_error_desc_NoSpace"_s, "No space left on the device"_s},
            {"zarn_installation_error_desc_"_s, "Nobody knows why"_s},
            {"zarn_installation_error_desc_Zu_groß_文"_s, "Dateien sind zu groß"_s},
            {"zarn_installation_error_desc_One"_s, "Place %1 for it"_s},
            {"zarn_installation_error_desc_Two"_s, "Place %2 for it"_s},
            {"zarn_installation_error_desc_Three"_s, "Place %3 for it"_s},
            {"zarn_installation_error_desc_Four"_s, "Place %4 for it"_s},
            {"zarn_installation_error_desc_Percent"_s, "100% full, %n files"_s},
            {"zarn_installation_error_desc_Lines"_s, "First line\nsecond line"_s},
    };
};

VELMORA_TEST(InstallationErrorTest, Anywhere, Core)

#include "tst_installationerror.moc"
