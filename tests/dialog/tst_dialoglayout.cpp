// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "showndialog.h"

namespace {

const QSize Phone(540, 960);

PackageTexts *longTexts()
{
    static PackageTexts texts;
    texts.name = QString(10000, QLatin1Char('W'));
    texts.version = QString(10000, QLatin1Char('9'));
    texts.summary = QStringLiteral("many words ").repeated(1000);
    texts.fileName = QLatin1Char('/') + QString(10000, QLatin1Char('x'));
    return &texts;
}

}

/** The places and sizes of items on screens of all sizes. */
class DialogLayoutTest : public DialogTest
{
    Q_OBJECT

private Q_SLOTS:
    void everythingFitsOrScrolls_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<double>("scale");
        QTest::addColumn<PackageTexts *>("texts");
        QTest::addColumn<QLocale>("locale");

        const QSize sizes[] = {{320, 480}, {480, 320}, {540, 960}, {960, 540}, {1280, 800}, {800, 1280}, {2560, 1600}};
        for (const QSize &size : sizes) {
            for (const double scale : {0.7, 1.0, 2.0, 3.4}) {
                for (const char *locale : {"C", "de", "ru", "ar"}) {
                    QTest::addRow("%dx%d, font %g, %s", size.width(), size.height(), scale, locale)
                            << size << scale << PackageTexts::ordinary() << QLocale(QLatin1String(locale));
                    QTest::addRow("%dx%d, font %g, %s, long texts", size.width(), size.height(), scale, locale)
                            << size << scale << longTexts() << QLocale(QLatin1String(locale));
                }
            }
        }
    }

    void everythingFitsOrScrolls()
    {
        QFETCH(QSize, size);
        QFETCH(double, scale);
        QFETCH(PackageTexts *, texts);
        QFETCH(QLocale, locale);
        // A larger font is made smaller on a screen of this size; the screen of these tests is larger.
        setFontSize(qMin(14 * scale, qMin(size.width(), size.height()) / 11.0));
        setLocale(locale);

        const ShownDialog dialog(texts, size);

        const QRectF window(QPointF(), size);
        const QRectF cancel = dialog.place("cancel");
        const QRectF install = dialog.place("install");
        QVERIFY(window.contains(cancel));
        QVERIFY(window.contains(install));
        QVERIFY(!cancel.intersects(install));
        // The offscreen platform's density is low, so that a density-independent pixel is one pixel.
        for (const char *target : {"cancel", "install", "file"}) {
            QVERIFY(dialog.item(target)->width() >= 48);
            QVERIFY(dialog.item(target)->height() >= 48);
        }
        for (const char *text : {"question", "warning", "label", "cancelLabel", "installLabel"}) {
            QVERIFY2(!dialog.property(text, "truncated").toBool(), text);
        }

        const QQuickItem *body = dialog.item("body");
        const QRectF view = ShownDialog::place(body);
        QVERIFY(!view.intersects(cancel | install));
        QVERIFY(view.height() >= 100);
        QCOMPARE(body->property("interactive").toBool(), body->property("contentHeight").toReal() > view.height());
        QCOMPARE(body->clip(), body->property("interactive").toBool());
        const QList<QQuickItem *> shown = dialog.texts();
        for (const QQuickItem *text : shown) {
            const QRectF place = ShownDialog::place(text);
            QVERIFY(place.left() >= 0 && place.right() <= size.width());
            QVERIFY(text->property("contentWidth").toReal() <= text->width() + 1);
            QVERIFY(text->property("contentHeight").toReal() <= text->height() + 1);
            QVERIFY(text->property("font").value<QFont>().pixelSize() >= 12);
            for (const QQuickItem *other : shown) {
                const bool isScrolled = body->isAncestorOf(text) != body->isAncestorOf(other);
                QVERIFY(text == other || isScrolled || !place.intersects(ShownDialog::place(other)));
            }
        }
        // The sheet is at the lower edge, and its content is not scrolled for the sake of its margins.
        QVERIFY(size.height() - qMax(cancel.bottom(), install.bottom()) <= 17);
        QVERIFY(!body->property("interactive").toBool() || dialog.place("page").top() <= 16);
    }

    void packageTextsAreBounded()
    {
        for (const int fontSize : {10, 20, 48}) {
            setFontSize(fontSize);
            const ShownDialog dialog(longTexts(), Phone);

            QCOMPARE(dialog.property("name", "lineCount").toInt(), 2);
            QCOMPARE(dialog.property("version", "lineCount").toInt(), 1);
            QCOMPARE(dialog.property("summary", "lineCount").toInt(), 4);
            for (const char *text : {"name", "version", "summary", "fileName"}) {
                QVERIFY(dialog.property(text, "truncated").toBool());
            }
        }
    }

    void textsWrapAtWords()
    {
        PackageTexts texts;
        texts.name = QStringLiteral("antidisestablishment lighthouse");
        texts.summary = QStringLiteral("Tide tables, antidisestablishmentarianism and weather for small boats");
        texts.fileName = QStringLiteral("/home/user/a-rather-long-folder/another-rather-long-folder/a-file-of-a-"
                                        "rather-long-name-for-one-line.rpm");
        const ShownDialog dialog(&texts, QSize(320, 800));
        QTest::keyClick(dialog.window(), Qt::Key_Backtab, Qt::ShiftModifier);
        QTest::keyClick(dialog.window(), Qt::Key_Space);
        dialog.awaitFrame();

        for (const char *text : {"name", "warning", "summary", "fileName", "folder"}) {
            QVERIFY2(dialog.property(text, "lineCount").toInt() > 1, text);
            QVERIFY2(ShownDialog::breaksAtWordsOnly(dialog.item(text)), text);
        }
        // A longer word is broken where it must be.
        texts.name = QString(40, QLatin1Char('W'));
        Q_EMIT texts.nameChanged();
        QCOMPARE(dialog.property("name", "lineCount").toInt(), 2);
        QVERIFY(dialog.property("name", "contentWidth").toReal() <= dialog.item("name")->width());
    }

    void actionsFitAfterTurning()
    {
        const ShownDialog dialog(longTexts(), Phone);

        dialog.window()->resize(Phone.transposed());
        dialog.awaitFrame();

        const QRectF window(QPointF(), Phone.transposed());
        QTRY_VERIFY(window.contains(dialog.place("cancel")));
        QVERIFY(window.contains(dialog.place("install")));
    }

    void longTextsLeaveTheWarningInSight_data()
    {
        QTest::addColumn<QSize>("size");

        QTest::newRow("phone") << Phone;
        QTest::newRow("phone on its side") << Phone.transposed();
        QTest::newRow("small phone") << QSize(320, 480);
    }

    void longTextsLeaveTheWarningInSight()
    {
        QFETCH(QSize, size);
        const ShownDialog dialog(longTexts(), size);

        QVERIFY(dialog.place("body").contains(dialog.place("warning")));
    }

    void pathAloneIsInTheMiddleOfItsCard()
    {
        PackageTexts texts;
        texts.name.clear();
        texts.version.clear();
        texts.summary.clear();
        const ShownDialog dialog(&texts);

        QCOMPARE(dialog.place("file"), dialog.place("card"));
    }

    void keysScroll()
    {
        setFontSize(28);
        const ShownDialog dialog(longTexts(), QSize(320, 480));
        const QQuickItem *body = dialog.item("body");
        const qreal end = body->property("contentHeight").toReal() - body->height();
        const auto position = [body] { return body->property("contentY").toReal(); };

        QTest::keyClick(dialog.window(), Qt::Key_Down);
        const qreal line = position();
        QVERIFY(line > 0);
        QTest::keyClick(dialog.window(), Qt::Key_Up);
        QCOMPARE(position(), 0.0);
        QTest::keyClick(dialog.window(), Qt::Key_Up);
        QCOMPARE(position(), 0.0);
        QTest::keyClick(dialog.window(), Qt::Key_PageDown);
        QVERIFY(position() > line);
        // Nothing is skipped: a line that was cut at the lower edge is whole at the upper one.
        const qreal page = position();
        const qreal overlap = body->height() - page;
        QVERIFY(overlap >= 28 && overlap <= body->height() / 2);
        for (int i = 0; i < 100; ++i) {
            QTest::keyClick(dialog.window(), Qt::Key_PageDown);
        }
        QCOMPARE(position(), end);
        QTest::keyClick(dialog.window(), Qt::Key_PageUp);
        QCOMPARE(position(), end - page);
        for (int i = 0; i < 100; ++i) {
            QTest::keyClick(dialog.window(), Qt::Key_PageUp);
        }
        QCOMPARE(position(), 0.0);
    }

    void fingerScrolls()
    {
        const ShownDialog dialog(longTexts(), QSize(320, 480));
        const QQuickItem *body = dialog.item("body");

        QTest::mousePress(dialog.window(), Qt::LeftButton, {}, QPoint(150, 300));
        for (int y = 290; y >= 100; y -= 10) {
            QTest::mouseMove(dialog.window(), QPoint(150, y));
        }
        QTest::mouseRelease(dialog.window(), Qt::LeftButton, {}, QPoint(150, 100));

        QTRY_VERIFY(body->property("contentY").toReal() > 0);
        QCOMPARE(dialog.answers(), 0);
    }

    void focusedPathIsInSight()
    {
        const ShownDialog dialog(longTexts(), QSize(320, 480));
        const auto *file = dialog.item("file");
        const QRectF view = dialog.place("body");
        QVERIFY(!view.contains(ShownDialog::place(file)));

        QTest::keyClick(dialog.window(), Qt::Key_Backtab, Qt::ShiftModifier);

        QCOMPARE(dialog.window()->activeFocusItem(), file);
        QVERIFY(view.contains(ShownDialog::place(file)));

        QTest::keyClick(dialog.window(), Qt::Key_Return);
        dialog.awaitFrame();

        // The path does not fit, so its beginning is shown.
        QVERIFY(file->height() > view.height());
        QCOMPARE(ShownDialog::place(file).top(), view.top());
    }

    void linesAreNoLongerThanReadable()
    {
        const ShownDialog dialog(longTexts(), QSize(2560, 1600));

        const QRectF actions = dialog.place("cancel") | dialog.place("install");
        QVERIFY(actions.width() <= 700);
        QVERIFY(dialog.item("summary")->width() <= 700);
        QVERIFY(qAbs(actions.center().x() - 1280) <= 1);
    }

    // The end of the name tells the kind of the file.
    void pathIsElidedInTheMiddle()
    {
        const ShownDialog dialog(longTexts(), QSize(320, 480));

        const QQuickItem *name = dialog.item("fileName");
        QVERIFY(name->property("truncated").toBool());
        for (const char *text : {"fileName", "folder"}) {
            QCOMPARE(dialog.property(text, "elide").toInt(), int(Qt::ElideMiddle));
            QCOMPARE(dialog.property(text, "lineCount").toInt(), 1);
        }
    }

    void pathOpens_data()
    {
        QTest::addColumn<bool>("byKey");

        QTest::newRow("by touch") << false;
        QTest::newRow("by key") << true;
    }

    void pathOpens()
    {
        QFETCH(bool, byKey);
        PackageTexts texts;
        texts.fileName = QLatin1Char('/') + QStringLiteral("folder/").repeated(580) + QStringLiteral("package.rpm");
        const ShownDialog dialog(&texts);
        const QQuickItem *folder = dialog.item("folder");
        const auto press = [&dialog, byKey] {
            if (byKey) {
                QTest::keyClick(dialog.window(), Qt::Key_Space);
            } else {
                const QPointF place = dialog.place("file").topLeft();
                QTest::mouseClick(dialog.window(), Qt::LeftButton, {}, place.toPoint() + QPoint(20, 20));
            }
            dialog.awaitFrame();
        };
        if (byKey) {
            QTest::keyClick(dialog.window(), Qt::Key_Backtab, Qt::ShiftModifier);
        }
        const qreal closedHeight = folder->height();

        press();

        QVERIFY(!folder->property("truncated").toBool());
        QVERIFY(folder->property("lineCount").toInt() > 10);
        QVERIFY(folder->property("contentWidth").toReal() <= folder->width());
        QVERIFY(dialog.item("file")->height() >= folder->height() + dialog.item("fileName")->height() + 8);

        press();

        QVERIFY(folder->property("truncated").toBool());
        QCOMPARE(folder->height(), closedHeight);
    }
};

DIALOG_TEST_MAIN(DialogLayoutTest)

#include "tst_dialoglayout.moc"
