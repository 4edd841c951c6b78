// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "showndialog.h"

#include <QPainter>

namespace {

const char *const PackageItems[] = {"name", "version", "summary", "path"};

QString shown(const ShownDialog &dialog, const char *id)
{
    return dialog.item(id)->property("text").toString();
}

/** Sets all four texts. */
void fill(PackageTexts *texts, const QString &text)
{
    texts->name = text;
    texts->version = text;
    texts->summary = text;
    texts->fileName = text;
}

QString codePoint(uint code)
{
    return QString::fromUcs4(&code, 1);
}

}

/** The texts of the package, which may be hostile. */
class DialogTextsTest : public DialogTest
{
    Q_OBJECT

private Q_SLOTS:
    void showsThePackage()
    {
        const ShownDialog dialog;

        QCOMPARE(shown(dialog, "name"), QStringLiteral("lighthouse-tides"));
        QCOMPARE(shown(dialog, "version"), QStringLiteral("2.4.1"));
        QCOMPARE(shown(dialog, "summary"), QStringLiteral("Tide tables and weather for small boats"));
        QCOMPARE(shown(dialog, "path"), QStringLiteral("/home/user/Downloads/lighthouse-tides-2.4.1-1.aarch64.rpm"));
    }

    void outlivesThePackage()
    {
        auto texts = std::make_unique<PackageTexts>();
        const ShownDialog dialog(texts.get());

        // The service may delete the package reader before the window.
        texts.reset();
        dialog.awaitFrame();

        QCOMPARE(shown(dialog, "name"), QStringLiteral("lighthouse-tides"));
        QTest::keyClick(dialog.window(), Qt::Key_Escape);
        QCOMPARE(dialog.dismissed(), 1);
    }

    void isShownWithoutPackage_data()
    {
        QTest::addColumn<bool>("published");

        QTest::newRow("nothing published") << false;
        QTest::newRow("null published") << true;
    }

    void isShownWithoutPackage()
    {
        QFETCH(bool, published);
        const auto dialog = published ? std::make_unique<ShownDialog>(nullptr)
                                      : std::make_unique<ShownDialog>(ShownDialog::WithoutPackage());

        for (const char *item : PackageItems) {
            QCOMPARE(shown(*dialog, item), QString());
        }
        QTest::keyClick(dialog->window(), Qt::Key_Escape);
        QCOMPARE(dialog->dismissed(), 1);
    }

    void hidesEmptyTexts()
    {
        PackageTexts texts;
        fill(&texts, QString());
        texts.fileName = QStringLiteral("/tmp/unreadable.rpm");
        const ShownDialog dialog(&texts);

        for (const char *item : {"name", "version", "summary"}) {
            QVERIFY(!dialog.item(item)->isVisible());
        }
        QCOMPARE(shown(dialog, "path"), texts.fileName);
    }

    void showsHarmlessText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");

        const auto addUnchanged = [](const char *name, const QString &text) { QTest::newRow(name) << text << text; };
        addUnchanged("bold", QStringLiteral("<b>bold</b>"));
        addUnchanged("link", QStringLiteral("<a href=\"http://example.com/\">click</a>"));
        addUnchanged("picture", QStringLiteral("<img src=\"file:///etc/passwd\"/>"));
        addUnchanged("entity", QStringLiteral("&lt;&amp;&#x202e;"));
        addUnchanged("document", QStringLiteral("<!DOCTYPE html><html><body><h1>Safe</h1></body></html>"));
        addUnchanged("markdown", QStringLiteral("# Safe [click](http://example.com/)"));
        addUnchanged("placeholder", QStringLiteral("%1 %n %L1 &accelerator"));
        addUnchanged("Latin", QStringLiteral("Žluťoučký kůň – “Größe” №5"));
        addUnchanged("combining", QStringLiteral("e\u0301"));
        addUnchanged("Arabic", QStringLiteral("مرحبا بالعالم"));
        addUnchanged("Persian", QStringLiteral("می\u200cخواهم"));
        addUnchanged("Chinese", QStringLiteral("你好，世界"));
        addUnchanged("beyond the first plane", codePoint(0x20000) + codePoint(0x1f680));

        const struct
        {
            const char *name;
            QString blanks;
        } blanks[] = {
                {"line feed", QStringLiteral("\n")},
                {"lines", QStringLiteral("\r\n\r\n\n\n")},
                {"tabs", QStringLiteral("\t\t\v\f")},
                {"separators", QStringLiteral("\u2028\u2029")},
                {"spaces", QString(50, QLatin1Char(' '))},
                {"wide spaces", QStringLiteral("\u00a0\u2003\u3000\u2009")},
                {"byte order mark", QStringLiteral("\ufeff")},
        };
        for (const auto &[name, text] : blanks) {
            QTest::newRow(name) << QLatin1Char('a') + text + QLatin1Char('b') << QStringLiteral("a b");
        }

        const struct
        {
            const char *name;
            uint first;
            uint last;
        } invisible[] = {
                {"controls", 0x01, 0x08},
                {"further controls", 0x0e, 0x1f},
                {"delete and C1", 0x7f, 0x9f},
                {"soft hyphen", 0xad, 0xad},
                {"grapheme joiner", 0x34f, 0x34f},
                {"Arabic letter mark", 0x61c, 0x61c},
                {"Hangul fillers", 0x115f, 0x1160},
                {"Khmer vowels", 0x17b4, 0x17b5},
                {"Mongolian separators", 0x180b, 0x180e},
                {"zero-width space", 0x200b, 0x200b},
                {"direction marks", 0x200e, 0x200f},
                {"embeddings and overrides", 0x202a, 0x202e},
                {"word joiner, isolates, deprecated", 0x2060, 0x206f},
                {"Hangul filler", 0x3164, 0x3164},
                {"half-width filler", 0xffa0, 0xffa0},
                {"annotations", 0xfff0, 0xfffb},
                {"hieroglyph controls", 0x13430, 0x1343f},
                {"shorthand controls", 0x1bca0, 0x1bca3},
                {"musical controls", 0x1d173, 0x1d17a},
                {"tags", 0xe0000, 0xe007f},
                {"last tag", 0xe0fff, 0xe0fff},
        };
        for (const auto &[name, first, last] : invisible) {
            for (uint code = first; code <= last; code += qMax(1u, (last - first) / 8)) {
                QTest::addRow("%s U+%04x", name, code)
                        << QStringLiteral("a%1b").arg(codePoint(code)) << QStringLiteral("a\ufffdb");
            }
        }
    }

    void showsHarmlessText()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        PackageTexts texts;
        fill(&texts, text);
        const ShownDialog dialog(&texts);

        for (const char *item : PackageItems) {
            QCOMPARE(shown(dialog, item), expected);
            QCOMPARE(dialog.item(item)->property("textFormat").toInt(), int(Qt::PlainText));
        }
    }

    void longTextsLoseTheirMiddle()
    {
        PackageTexts texts;
        const QString text = QStringLiteral("begin ") + QString(1 << 20, QLatin1Char('W')) + QStringLiteral(" end");
        fill(&texts, text);
        const ShownDialog dialog(&texts);

        for (const char *item : PackageItems) {
            const QString part = shown(dialog, item);
            QVERIFY(part.startsWith(QLatin1String("begin W")));
            QVERIFY(part.contains(QStringLiteral("…")));
            QVERIFY(part.endsWith(QLatin1String("W end")));
        }
        QCOMPARE(shown(dialog, "name").size(), 129);
        QCOMPARE(shown(dialog, "version").size(), 65);
        QCOMPARE(shown(dialog, "summary").size(), 1001);
        QCOMPARE(shown(dialog, "path").size(), 4097);
    }

    void charactersAreNotHalved()
    {
        const QString longer = QStringLiteral("a") + QStringLiteral("\U0001f5fc").repeated(10000) + QLatin1Char('b');
        PackageTexts texts;
        fill(&texts, longer);
        const ShownDialog dialog(&texts);

        for (const char *item : PackageItems) {
            const QString part = shown(dialog, item);
            QVERIFY(part.contains(QStringLiteral("…")));
            QCOMPARE(part.toUcs4().size() * 2 - 3, part.size());
        }
    }

    void stackedMarksStayInTheirPlace()
    {
        // The surroundings of the card look the same, whatever texts it shows.
        const auto surroundings = [](const QString &text) {
            PackageTexts texts;
            fill(&texts, text);
            const ShownDialog dialog(&texts);
            QImage picture = dialog.picture();
            QPainter(&picture).fillRect(dialog.place("card"), Qt::black);
            return picture;
        };
        const QImage plain = surroundings(QStringLiteral("a"));
        const QImage above = surroundings(QLatin1Char('a') + QString(60, QChar(0x0301)));
        const QImage below = surroundings(QLatin1Char('a') + QString(60, QChar(0x0323)));

        QVERIFY(!plain.isNull());
        QCOMPARE(above, plain);
        QCOMPARE(below, plain);
    }
};

DIALOG_TEST_MAIN(DialogTextsTest)

#include "tst_dialogtexts.moc"
