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

/** All four texts the same. */
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

/** What the dialog shows of a package, whose texts may come from an enemy. */
class DialogTextsTest : public DialogTest
{
    Q_OBJECT

private Q_SLOTS:
    void showsThePackage();
    void showsWhatItWasOpenedWith();
    void showsAPageWithoutPackage_data();
    void showsAPageWithoutPackage();
    void leavesUnknownTextsOut();
    void markupIsText_data();
    void markupIsText();
    void unseenCharactersAreReplaced_data();
    void unseenCharactersAreReplaced();
    void blanksAreOne_data();
    void blanksAreOne();
    void lettersOfAllScriptsStay_data();
    void lettersOfAllScriptsStay();
    void longTextsLoseTheirMiddle();
    void charactersAreNotHalved();
    void heapsOfMarksStayInTheirPlace();
};

void DialogTextsTest::showsThePackage()
{
    PackageTexts texts;
    const ShownDialog dialog(&texts);

    QCOMPARE(shown(dialog, "name"), QStringLiteral("lighthouse-tides"));
    QCOMPARE(shown(dialog, "version"), QStringLiteral("2.4.1"));
    QCOMPARE(shown(dialog, "summary"), QStringLiteral("Tide tables and weather for small boats"));
    QCOMPARE(shown(dialog, "path"), QStringLiteral("/home/user/Downloads/lighthouse-tides-2.4.1-1.aarch64.rpm"));
}

void DialogTextsTest::showsWhatItWasOpenedWith()
{
    auto texts = std::make_unique<PackageTexts>();
    const ShownDialog dialog(texts.get());

    // The service's package reader may be gone before the window is.
    texts.reset();
    dialog.awaitFrame();

    QCOMPARE(shown(dialog, "name"), QStringLiteral("lighthouse-tides"));
    QTest::keyClick(dialog.window(), Qt::Key_Escape);
    QCOMPARE(dialog.dismissed(), 1);
}

void DialogTextsTest::showsAPageWithoutPackage_data()
{
    QTest::addColumn<bool>("published");

    QTest::newRow("nothing published") << false;
    QTest::newRow("null published") << true;
}

void DialogTextsTest::showsAPageWithoutPackage()
{
    QFETCH(bool, published);
    const auto dialog = published ? std::make_unique<ShownDialog>(nullptr) : std::make_unique<ShownDialog>();

    for (const char *item : PackageItems) {
        QCOMPARE(shown(*dialog, item), QString());
    }
    QTest::keyClick(dialog->window(), Qt::Key_Escape);
    QCOMPARE(dialog->dismissed(), 1);
}

void DialogTextsTest::leavesUnknownTextsOut()
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

void DialogTextsTest::markupIsText_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("bold") << QStringLiteral("<b>bold</b>");
    QTest::newRow("link") << QStringLiteral("<a href=\"http://example.com/\">click</a>");
    QTest::newRow("picture") << QStringLiteral("<img src=\"file:///etc/passwd\"/>");
    QTest::newRow("entity") << QStringLiteral("&lt;&amp;&#x202e;");
    QTest::newRow("document") << QStringLiteral("<!DOCTYPE html><html><body><h1>Safe</h1></body></html>");
    QTest::newRow("markdown") << QStringLiteral("# Safe [click](http://example.com/)");
    QTest::newRow("placeholder") << QStringLiteral("%1 %n %L1 &accelerator");
}

void DialogTextsTest::markupIsText()
{
    QFETCH(QString, text);
    PackageTexts texts;
    fill(&texts, text);
    const ShownDialog dialog(&texts);

    for (const char *item : PackageItems) {
        QCOMPARE(shown(dialog, item), text);
        QCOMPARE(dialog.item(item)->property("textFormat").toInt(), int(Qt::PlainText));
    }
}

void DialogTextsTest::unseenCharactersAreReplaced_data()
{
    QTest::addColumn<uint>("first");
    QTest::addColumn<uint>("last");

    QTest::newRow("controls") << 0x01u << 0x08u;
    QTest::newRow("further controls") << 0x0eu << 0x1fu;
    QTest::newRow("delete and C1") << 0x7fu << 0x9fu;
    QTest::newRow("soft hyphen") << 0xadu << 0xadu;
    QTest::newRow("grapheme joiner") << 0x34fu << 0x34fu;
    QTest::newRow("Arabic letter mark") << 0x61cu << 0x61cu;
    QTest::newRow("Hangul fillers") << 0x115fu << 0x1160u;
    QTest::newRow("Khmer vowels") << 0x17b4u << 0x17b5u;
    QTest::newRow("Mongolian separators") << 0x180bu << 0x180eu;
    QTest::newRow("zero-width space") << 0x200bu << 0x200bu;
    QTest::newRow("direction marks") << 0x200eu << 0x200fu;
    QTest::newRow("embeddings and overrides") << 0x202au << 0x202eu;
    QTest::newRow("word joiner, isolates, deprecated") << 0x2060u << 0x206fu;
    QTest::newRow("Hangul filler") << 0x3164u << 0x3164u;
    QTest::newRow("half-width filler") << 0xffa0u << 0xffa0u;
    QTest::newRow("annotations") << 0xfff0u << 0xfffbu;
    QTest::newRow("hieroglyph controls") << 0x13430u << 0x1343fu;
    QTest::newRow("shorthand controls") << 0x1bca0u << 0x1bca3u;
    QTest::newRow("musical controls") << 0x1d173u << 0x1d17au;
    QTest::newRow("tags") << 0xe0000u << 0xe007fu;
    QTest::newRow("last tag") << 0xe0fffu << 0xe0fffu;
}

void DialogTextsTest::unseenCharactersAreReplaced()
{
    QFETCH(uint, first);
    QFETCH(uint, last);
    for (uint code = first; code <= last; code += qMax(1u, (last - first) / 8)) {
        PackageTexts texts;
        fill(&texts, QStringLiteral("a%1b").arg(codePoint(code)));
        const ShownDialog dialog(&texts);

        for (const char *item : PackageItems) {
            QCOMPARE(shown(dialog, item), QStringLiteral("a\ufffdb"));
        }
    }
}

void DialogTextsTest::blanksAreOne_data()
{
    QTest::addColumn<QString>("blanks");

    QTest::newRow("line feed") << QStringLiteral("\n");
    QTest::newRow("lines") << QStringLiteral("\r\n\r\n\n\n");
    QTest::newRow("tabs") << QStringLiteral("\t\t\v\f");
    QTest::newRow("separators") << QStringLiteral("\u2028\u2029");
    QTest::newRow("spaces") << QString(50, QLatin1Char(' '));
    QTest::newRow("wide spaces") << QStringLiteral("\u00a0\u2003\u3000\u2009");
    QTest::newRow("byte order mark") << QStringLiteral("\ufeff");
}

void DialogTextsTest::blanksAreOne()
{
    QFETCH(QString, blanks);
    PackageTexts texts;
    fill(&texts, QLatin1Char('a') + blanks + QLatin1Char('b'));
    const ShownDialog dialog(&texts);

    for (const char *item : PackageItems) {
        QCOMPARE(shown(dialog, item), QStringLiteral("a b"));
    }
}

void DialogTextsTest::lettersOfAllScriptsStay_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("Latin") << QStringLiteral("Žluťoučký kůň – “Größe” №5");
    QTest::newRow("combining") << QStringLiteral("e\u0301");
    QTest::newRow("Arabic") << QStringLiteral("مرحبا بالعالم");
    QTest::newRow("Persian") << QStringLiteral("می\u200cخواهم");
    QTest::newRow("Chinese") << QStringLiteral("你好，世界");
    QTest::newRow("beyond the first plane") << codePoint(0x20000) + codePoint(0x1f680);
}

void DialogTextsTest::lettersOfAllScriptsStay()
{
    QFETCH(QString, text);
    PackageTexts texts;
    fill(&texts, text);
    const ShownDialog dialog(&texts);

    for (const char *item : PackageItems) {
        QCOMPARE(shown(dialog, item), text);
    }
}

void DialogTextsTest::longTextsLoseTheirMiddle()
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

void DialogTextsTest::charactersAreNotHalved()
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

void DialogTextsTest::heapsOfMarksStayInTheirPlace()
{
    // What surrounds the package's own texts looks the same, whatever is in them.
    const auto surroundings = [](const QString &text) {
        PackageTexts texts;
        fill(&texts, text);
        const ShownDialog dialog(&texts);
        QImage picture = dialog.picture();
        QPainter(&picture).fillRect(ShownDialog::place(dialog.item("card")), Qt::black);
        return picture;
    };
    const QImage plain = surroundings(QStringLiteral("a"));
    const QImage above = surroundings(QLatin1Char('a') + QString(60, QChar(0x0301)));
    const QImage below = surroundings(QLatin1Char('a') + QString(60, QChar(0x0323)));

    QVERIFY(!plain.isNull());
    QCOMPARE(above, plain);
    QCOMPARE(below, plain);
}

int main(int argc, char **argv)
{
    return runDialogTest<DialogTextsTest>(argc, argv);
}

#include "tst_dialogtexts.moc"
