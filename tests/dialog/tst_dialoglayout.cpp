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
    texts.fileName = QLatin1Char('/') + QString(10000, QLatin1Char('f'));
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
            for (const double scale : {1.0, 2.0}) {
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
        setFontSize(14 * scale);
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
            QVERIFY(dialog.item(target)->width() >= 44);
            QVERIFY(dialog.item(target)->height() >= 44);
        }
        for (const char *button : {"cancel", "install"}) {
            const auto *label = dialog.item(button)->property("contentItem").value<QQuickItem *>();
            QVERIFY(!label->property("truncated").toBool());
        }

        const QQuickItem *body = dialog.item("body");
        const QRectF view = ShownDialog::place(body);
        QVERIFY(!view.intersects(cancel | install));
        QVERIFY(view.height() >= 100);
        QCOMPARE(body->property("interactive").toBool(), body->property("contentHeight").toReal() > view.height());
        QCOMPARE(body->clip(), body->property("interactive").toBool());
        for (const QQuickItem *text : dialog.texts()) {
            const QRectF place = ShownDialog::place(text);
            QVERIFY(place.left() >= 0 && place.right() <= size.width());
        }
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

        QCOMPARE(dialog.place("file").center(), dialog.place("card").center());
    }

    void keysScroll()
    {
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
        for (int i = 0; i < 100; ++i) {
            QTest::keyClick(dialog.window(), Qt::Key_PageDown);
        }
        QCOMPARE(position(), end);
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

    void pathIsElidedInTheMiddle()
    {
        const ShownDialog dialog(PackageTexts::ordinary(), QSize(320, 480));

        const QQuickItem *path = dialog.item("path");
        QVERIFY(path->property("truncated").toBool());
        QCOMPARE(path->property("elide").toInt(), int(Qt::ElideMiddle));
        QCOMPARE(path->property("lineCount").toInt(), 1);
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
        const QQuickItem *path = dialog.item("path");
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
        const qreal closedHeight = path->height();

        press();

        QCOMPARE(path->property("text").toString(), texts.fileName);
        QVERIFY(!path->property("truncated").toBool());
        QVERIFY(path->property("lineCount").toInt() > 10);
        QVERIFY(path->property("contentWidth").toReal() <= path->width());

        press();

        QVERIFY(path->property("truncated").toBool());
        QCOMPARE(path->height(), closedHeight);
    }
};

DIALOG_TEST_MAIN(DialogLayoutTest)

#include "tst_dialoglayout.moc"
