// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "showndialog.h"

#include <algorithm>

namespace {

const char *const PackageItems[] = {"name", "version", "summary", "path"};

/** The text of an item without the words and the marks that the dialog puts around the package's own. */
QString shown(const ShownDialog &dialog, const char *id)
{
    if (qstrcmp(id, "path") == 0) {
        return shown(dialog, "folder") + shown(dialog, "fileName");
    }
    QString text = dialog.property(id, "text").toString();
    if (qstrcmp(id, "version") == 0) {
        text = text.mid(text.indexOf(QChar(0x2068)) + 1).chopped(1);
    }
    if (text.startsWith(QChar(0x200e))) {
        text.remove(0, 1);
    }
    return text;
}

QString codePoint(uint code)
{
    // fromUcs4() would drop a byte order mark.
    return code < 0x10000 ? QString(QChar(code)) : QString::fromUcs4(&code, 1);
}

/** A text as the item of this id has to show it: a version has no blanks. */
QString expectedAs(const char *id, const QString &text)
{
    return qstrcmp(id, "version") == 0 ? QString(text).replace(QLatin1Char(' '), QChar(0xfffd)) : text;
}

struct CodePoints
{
    const char *name;
    uint first;
    uint last;
};

// The code points with Unicode's property Default_Ignorable_Code_Point: a program that does not know them shows
// nothing.
const CodePoints DefaultIgnorable[] = {
        {"soft hyphen", 0xad, 0xad},
        {"grapheme joiner", 0x34f, 0x34f},
        {"Arabic letter mark", 0x61c, 0x61c},
        {"Hangul fillers", 0x115f, 0x1160},
        {"Khmer vowels", 0x17b4, 0x17b5},
        {"Mongolian selectors and separator", 0x180b, 0x180f},
        {"zero-width space, joiners, direction marks", 0x200b, 0x200f},
        {"embeddings and overrides", 0x202a, 0x202e},
        {"word joiner, isolates, deprecated", 0x2060, 0x206f},
        {"Hangul filler", 0x3164, 0x3164},
        {"variation selectors", 0xfe00, 0xfe0f},
        {"byte order mark", 0xfeff, 0xfeff},
        {"half-width filler", 0xffa0, 0xffa0},
        {"unassigned specials", 0xfff0, 0xfff8},
        {"shorthand controls", 0x1bca0, 0x1bca3},
        {"musical controls", 0x1d173, 0x1d17a},
        {"tags and further variation selectors", 0xe0000, 0xe0fff},
};

// Further code points that show nothing, or an empty place.
const CodePoints Empty[] = {
        {"controls", 0x01, 0x08},
        {"further controls", 0x0e, 0x1f},
        {"delete and C1", 0x7f, 0x9f},
        {"empty Braille", 0x2800, 0x2800},
        {"annotations", 0xfff9, 0xfffb},
        {"object replacement", 0xfffc, 0xfffc},
        {"hieroglyph controls", 0x13430, 0x1343f},
        {"null notehead", 0x1d159, 0x1d159},
};

/** The text that the dialog shows for an invisible code point. */
QString shownForInvisible(uint code)
{
    // Persian and Indic words need the joiners, emoji the joiner and the selectors.
    if (code == 0x200c || code == 0x200d || (code >= 0xfe00 && code <= 0xfe0f)) {
        return codePoint(code);
    }
    return code == 0xfeff ? QStringLiteral(" ") : QStringLiteral("\ufffd");
}

/** A catalogue with another text before the version. */
class VersionText : public QTranslator
{
public:
    explicit VersionText(const QString &text)
        : m_text(text)
    {
    }

    bool isEmpty() const override { return false; }

    QString translate(const char *, const char *id, const char *, int) const override
    {
        return qstrcmp(id, "installationhandler-version") == 0 ? m_text : QString();
    }

private:
    const QString m_text;
};

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
        QCOMPARE(shown(dialog, "fileName"), QStringLiteral("lighthouse-tides-2.4.1-1.aarch64.rpm"));
        QCOMPARE(shown(dialog, "folder"), QStringLiteral("/home/user/Downloads/"));
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
        texts.setAll(QString());
        texts.fileName = QStringLiteral("/tmp/unreadable.rpm");
        const ShownDialog dialog(&texts);

        for (const char *item : {"name", "version", "summary"}) {
            QVERIFY(!dialog.item(item)->isVisible());
        }
        QVERIFY(!dialog.item("label")->isVisible());
        QCOMPARE(shown(dialog, "folder"), QStringLiteral("/tmp/"));
        QCOMPARE(shown(dialog, "fileName"), QStringLiteral("unreadable.rpm"));
    }

    void splitsThePath_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("fileName");

        QTest::newRow("absolute") << QStringLiteral("/a/b/") << QStringLiteral("c.rpm");
        QTest::newRow("top") << QStringLiteral("/") << QStringLiteral("c.rpm");
        QTest::newRow("relative") << QString() << QStringLiteral("c.rpm");
        QTest::newRow("folder") << QStringLiteral("/a/") << QStringLiteral("b/");
        QTest::newRow("nothing") << QString() << QString();
    }

    void splitsThePath()
    {
        QFETCH(QString, folder);
        QFETCH(QString, fileName);
        PackageTexts texts;
        texts.fileName = folder + fileName;
        const ShownDialog dialog(&texts);

        QCOMPARE(shown(dialog, "folder"), folder);
        QCOMPARE(dialog.item("folder")->isVisible(), !folder.isEmpty());
        QCOMPARE(shown(dialog, "fileName"), fileName);
    }

    // Known behaviour 72.
    void textWithoutALetterIsNoText_data()
    {
        QTest::addColumn<QString>("text");

        QTest::newRow("space") << QStringLiteral(" ");
        QTest::newRow("lines") << QStringLiteral("\n\r\n\t");
        QTest::newRow("wide spaces") << QStringLiteral("\u00a0\u1680\u2003\u3000");
        QTest::newRow("empty Braille") << QStringLiteral("\u2800\u2800");
        QTest::newRow("joiners") << QStringLiteral("\u200b\u200c\u200d\ufe0f\u2060\ufeff");
        QTest::newRow("fillers") << QStringLiteral("\u3164\u115f \uffa0");
        QTest::newRow("overrides") << QStringLiteral("\u202e\u2066 \u200f");
        QTest::newRow("Mongolian selector") << QStringLiteral("\u180f");
        QTest::newRow("object replacement") << QStringLiteral("\ufffc \ufffc");
        QTest::newRow("null notehead") << codePoint(0x1d159);
    }

    void textWithoutALetterIsNoText()
    {
        QFETCH(QString, text);
        PackageTexts texts;
        texts.name = texts.version = texts.summary = text;
        const ShownDialog dialog(&texts);

        for (const char *item : {"name", "version", "label", "summary"}) {
            QVERIFY(!dialog.item(item)->isVisible());
        }
    }

    // A text's own direction moves neither the words around it nor the end of the file's name.
    void directionsAreApart()
    {
        PackageTexts texts;
        texts.setAll(QStringLiteral("שלום"));
        texts.fileName = QStringLiteral("/שלום/invoice.pdf\u202empr.א.rpm");
        const ShownDialog dialog(&texts);

        QCOMPARE(dialog.property("version", "text").toString(), QStringLiteral("Version \u2068שלום\u2069"));
        QCOMPARE(dialog.property("fileName", "text").toString(), QStringLiteral("\u200einvoice.pdf\ufffdmpr.א.rpm"));
        QCOMPARE(dialog.property("folder", "text").toString(), QStringLiteral("\u200e/שלום/"));
        for (const char *item : PackageTextItems) {
            QCOMPARE(dialog.property(item, "effectiveHorizontalAlignment").toInt(), int(Qt::AlignLeft));
        }
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
    }

    void showsHarmlessText()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        PackageTexts texts;
        texts.setAll(text);
        const ShownDialog dialog(&texts);

        for (const char *item : PackageItems) {
            QCOMPARE(shown(dialog, item), expectedAs(item, expected));
        }
        for (const char *item : PackageTextItems) {
            QCOMPARE(dialog.property(item, "textFormat").toInt(), int(Qt::PlainText));
        }
    }

    void invisibleCharactersAreSeen_data()
    {
        QTest::addColumn<uint>("first");
        QTest::addColumn<uint>("last");

        for (const CodePoints &range : DefaultIgnorable) {
            QTest::newRow(range.name) << range.first << range.last;
        }
        for (const CodePoints &range : Empty) {
            QTest::newRow(range.name) << range.first << range.last;
        }
    }

    void invisibleCharactersAreSeen()
    {
        QFETCH(uint, first);
        QFETCH(uint, last);
        PackageTexts texts;
        const ShownDialog dialog(&texts);

        // A path takes many characters at once, a name few.
        const uint most = 1000;
        for (uint begin = first; begin <= last; begin += most) {
            const uint end = qMin(begin + most, last + 1);
            QString all;
            QString expected;
            for (uint code = begin; code < end; ++code) {
                all += QStringLiteral("a%1b").arg(codePoint(code));
                expected += QStringLiteral("a%1b").arg(shownForInvisible(code));
            }
            texts.fileName = all;
            Q_EMIT texts.fileNameChanged();
            const QString path = shown(dialog, "path");
            QCOMPARE(path.size(), expected.size());
            const auto difference = std::mismatch(path.begin(), path.end(), expected.begin());
            QVERIFY2(difference.first == path.end(),
                     qPrintable(QStringLiteral("after %1 characters").arg(difference.first - path.begin())));
        }
        const QString few = QStringLiteral("a%1b").arg(codePoint(last));
        texts.name = texts.version = texts.summary = few;
        Q_EMIT texts.nameChanged();
        Q_EMIT texts.versionChanged();
        Q_EMIT texts.summaryChanged();
        for (const char *item : {"name", "version", "summary"}) {
            QCOMPARE(shown(dialog, item), expectedAs(item, QStringLiteral("a%1b").arg(shownForInvisible(last))));
        }
    }

    // A version that reads like words of the system would need blanks.
    void versionHasNoBlanks()
    {
        PackageTexts texts;
        texts.version = QStringLiteral("1.0 (verified,\u00a0signature\u2003OK)");
        const ShownDialog dialog(&texts);

        QCOMPARE(shown(dialog, "version"), QStringLiteral("1.0\ufffd(verified,\ufffdsignature\ufffdOK)"));
    }

    // As after an upgrade, when the running program has older catalogues.
    void versionNeedsItsText_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("shown");

        QTest::newRow("text") << QStringLiteral("Edition %1") << QStringLiteral("Edition \u20682.4.1\u2069");
        QTest::newRow("text without a place") << QStringLiteral("Edition") << QStringLiteral("Edition");
        // A translator that has nothing to say leaves the identifier.
        QTest::newRow("no text") << QStringLiteral("installationhandler-version")
                                 << QStringLiteral("installationhandler-version");
    }

    void versionNeedsItsText()
    {
        QFETCH(QString, pattern);
        VersionText translator(pattern);
        QCoreApplication::installTranslator(&translator);
        const ShownDialog dialog;

        QTEST(dialog.property("version", "text").toString(), "shown");
        // Qt complains about a text without a place for the version.
        QCOMPARE(takeLog().isEmpty(), pattern.contains(QLatin1String("%1")));
    }

    void longTextsLoseTheirMiddle()
    {
        PackageTexts texts;
        const QString text = QStringLiteral("begin ") + QString(1 << 20, QLatin1Char('W')) + QStringLiteral(" end");
        texts.setAll(text);
        const ShownDialog dialog(&texts);

        for (const char *item : PackageItems) {
            const QString part = shown(dialog, item);
            QVERIFY(part.startsWith(expectedAs(item, QStringLiteral("begin W"))));
            QVERIFY(part.contains(QStringLiteral("…")));
            QVERIFY(part.endsWith(expectedAs(item, QStringLiteral("W end"))));
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
        texts.setAll(longer);
        const ShownDialog dialog(&texts);

        for (const char *item : PackageItems) {
            const QString part = shown(dialog, item);
            QVERIFY(part.contains(QStringLiteral("…")));
            QCOMPARE(part.toUcs4().size() * 2 - 3, part.size());
        }
    }
};

DIALOG_TEST_MAIN(DialogTextsTest)

#include "tst_dialogtexts.moc"
