// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "showndialog.h"

#include <QDir>

namespace {

const QSize SmallPhone(320, 480);
const QSize Phone(360, 640);
// The largest letters that the dialog shows on the small phone: an eleventh of its width.
constexpr int LargeFont = 28;
constexpr int OrdinaryFont = 14;

const struct
{
    QSize size;
    int fontSize;
} Screens[] = {{SmallPhone, LargeFont}, {Phone, OrdinaryFont}};

// The system's own words.
const char *const SystemTexts[] = {"question", "warning", "label", "cancelLabel", "installLabel"};

/** The languages of all installed catalogues but engineering English. */
QStringList languages()
{
    const QString prefix = QStringLiteral("velmora-installationhandler-");
    const QString suffix = QStringLiteral(".qm");
    QStringList found;
    const QStringList files =
            QDir(QStringLiteral("/usr/share/translations")).entryList({prefix + QLatin1Char('*') + suffix});
    for (const QString &file : files) {
        found.append(file.mid(prefix.size()).chopped(suffix.size()));
    }
    return found;
}

/** A locale that uses the catalogue of a language. */
QLocale localeOf(const QString &language)
{
    // Brazil is where Qt expects most people who speak Portuguese, and it has a catalogue of its own.
    return QLocale(language == QLatin1String("pt") ? QStringLiteral("pt_PT") : language);
}

PackageTexts *longTexts()
{
    static PackageTexts texts;
    texts.name = QStringLiteral("a-long-name ").repeated(20);
    texts.version = QString(10000, QLatin1Char('9'));
    texts.summary = QStringLiteral("many words ").repeated(1000);
    texts.fileName = QLatin1Char('/') + QString(10000, QLatin1Char('x'));
    return &texts;
}

qreal lineHeight(const QQuickItem *text)
{
    return text->property("contentHeight").toReal() / text->property("lineCount").toInt();
}

}

/** The dialog in all languages, on small screens. */
class DialogLanguagesTest : public DialogTest
{
    Q_OBJECT

private:
    static void addLanguages()
    {
        QTest::addColumn<QString>("language");

        const QStringList all = languages();
        for (const QString &language : all) {
            QTest::newRow(qPrintable(language)) << language;
        }
    }

private Q_SLOTS:
    void systemTextsAreWhole_data() { addLanguages(); }

    void systemTextsAreWhole()
    {
        QFETCH(QString, language);
        QCOMPARE(setLocale(localeOf(language)), language);
        for (const auto &screen : Screens) {
            setFontSize(screen.fontSize);
            const ShownDialog dialog(PackageTexts::ordinary(), screen.size);
            const QRectF page = dialog.place("page");

            for (const char *id : SystemTexts) {
                const QQuickItem *text = dialog.item(id);
                const QRectF place = ShownDialog::place(text);
                QVERIFY2(!text->property("truncated").toBool(), id);
                QVERIFY2(place.left() >= page.left() && place.right() <= page.right(), id);
                QVERIFY2(text->implicitHeight() <= text->height() + 1, id);
                QVERIFY2(text->property("contentWidth").toReal() <= text->width(), id);
                QVERIFY2(ShownDialog::breaksAtWordsOnly(text), id);
            }
            const QList<QQuickItem *> texts = dialog.texts();
            QCOMPARE(texts.size(), 10);
            for (const QQuickItem *text : texts) {
                for (const QQuickItem *other : texts) {
                    const QRectF place = ShownDialog::place(text);
                    const bool isScrolled =
                            dialog.item("body")->isAncestorOf(text) != dialog.item("body")->isAncestorOf(other);
                    QVERIFY2(text == other || isScrolled || !place.intersects(ShownDialog::place(other)),
                             qPrintable(text->property("text").toString()));
                }
            }
        }
    }

    void buttonsFit_data() { addLanguages(); }

    void buttonsFit()
    {
        QFETCH(QString, language);
        const bool mirrored =
                QStringList({QStringLiteral("ar"), QStringLiteral("fa"), QStringLiteral("he")}).contains(language);
        setLocale(localeOf(language));
        for (const auto &screen : Screens) {
            setFontSize(screen.fontSize);
            const ShownDialog dialog(PackageTexts::ordinary(), screen.size);
            const QRectF cancel = dialog.place("cancel");
            const QRectF install = dialog.place("install");

            QCOMPARE(install.size(), cancel.size());
            const bool isStacked = cancel.left() == install.left();
            QVERIFY(isStacked ? cancel.bottom() < install.top() : cancel.top() == install.top());
            QVERIFY(isStacked || (cancel.left() > install.left()) == mirrored);
            for (const char *label : {"cancelLabel", "installLabel"}) {
                QCOMPARE(dialog.property(label, "lineCount").toInt(), 1);
                QVERIFY(dialog.item(label)->implicitWidth() <= cancel.width());
            }
            for (const char *text : {"question", "name", "version", "warning", "label", "summary", "fileName"}) {
                QCOMPARE(dialog.property(text, "effectiveHorizontalAlignment").toInt(),
                         int(mirrored ? Qt::AlignRight : Qt::AlignLeft));
            }
            QCOMPARE(dialog.place("badge").left() > dialog.place("warning").left(), mirrored);
            QCOMPARE(dialog.place("arrow").left() < dialog.place("fileName").left(), mirrored);
        }
    }

    // The smallest screen has no room for the whole warning in large letters. Its badge and its first line say that
    // there is one, and "Install" shows all of it before it takes a pointer (Known behaviour 71).
    void identityAndWarningAreSeenAtTheTop_data() { addLanguages(); }

    void identityAndWarningAreSeenAtTheTop()
    {
        QFETCH(QString, language);
        setLocale(localeOf(language));
        setFontSize(LargeFont);
        for (PackageTexts *texts : {PackageTexts::ordinary(), longTexts()}) {
            const ShownDialog dialog(texts, SmallPhone);
            const QRectF view = dialog.place("body");

            QCOMPARE(dialog.property("body", "contentY").toReal(), 0.0);
            for (const char *item : {"question", "name", "version", "badge"}) {
                QVERIFY2(view.contains(dialog.place(item)), item);
            }
            const QQuickItem *warning = dialog.item("warning");
            const qreal top = dialog.place("warning").top() + warning->property("topPadding").toReal();
            QVERIFY(top + lineHeight(warning) <= view.bottom());
        }
    }
};

DIALOG_TEST_MAIN(DialogLanguagesTest)

#include "tst_dialoglanguages.moc"
