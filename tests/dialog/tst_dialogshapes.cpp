// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "pictures.h"
#include "showndialog.h"

#include <QTextLayout>

#include <cmath>

namespace {

const QSize TallScreen(1080, 1920);

/** The middle of a text's first line, from the upper edge of the window. */
double middleOfFirstLine(const ShownDialog &dialog, const char *id)
{
    QTextLayout layout(dialog.property(id, "text").toString(), dialog.property(id, "font").value<QFont>());
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(dialog.item(id)->width());
    layout.endLayout();
    return dialog.place(id).top() + dialog.property(id, "topPadding").toReal() + line.height() / 2;
}

/** Where there is ink in a part of a picture of the window. */
QRect inkIn(const QImage &picture, const QRect &part)
{
    return inkOf(picture.copy(part)).translated(part.topLeft());
}

/** The part of a box that is beside an item: on the right, or on the left. */
QRect beside(const QRectF &box, const QRectF &item, bool onTheRight)
{
    QRectF part = box;
    if (onTheRight) {
        part.setLeft(item.right());
    } else {
        part.setRight(item.left());
    }
    return part.toRect();
}

/** The number of pixels of one colour in a row, from a point to the right (1) or to the left (-1). */
int lengthOf(QRgb colour, const QImage &picture, QPoint point, int step)
{
    int length = 0;
    while (picture.valid(point) && picture.pixel(point) == colour) {
        ++length;
        point.rx() += step;
    }
    return length;
}

}

/** The shapes that the dialog draws: where they are, and how they look. */
class DialogShapesTest : public DialogTest
{
    Q_OBJECT

private:
    static void addFontsAndLocales()
    {
        QTest::addColumn<int>("fontSize");
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<bool>("mirrored");

        for (const int fontSize : {12, 15, 20, 27, 40, 50}) {
            QTest::addRow("English, font %d", fontSize) << fontSize << QLocale::c() << false;
            QTest::addRow("Arabic, font %d", fontSize) << fontSize << QLocale(QLocale::Arabic) << true;
        }
    }

private Q_SLOTS:
    void badgeIsBesideTheFirstLine_data() { addFontsAndLocales(); }

    void badgeIsBesideTheFirstLine()
    {
        QFETCH(int, fontSize);
        QFETCH(QLocale, locale);
        QFETCH(bool, mirrored);
        setFontSize(fontSize);
        setLocale(locale);
        const ShownDialog dialog(PackageTexts::ordinary(), TallScreen);
        QVERIFY(dialog.property("warning", "lineCount").toInt() > 1);

        // Letters may begin a little before their place.
        const QRectF warning = dialog.place("warning").adjusted(-3, 0, 3, 0);
        const QRect badge = inkIn(dialog.picture(), beside(dialog.place("panel"), warning, mirrored));

        QCOMPARE(badge.width(), badge.height());
        QVERIFY(badge.width() >= fontSize);
        QVERIFY(qAbs(QRectF(badge).center().y() - middleOfFirstLine(dialog, "warning")) <= 1);
        const QRectF column = dialog.place("question");
        const double margin = mirrored ? column.right() - QRectF(badge).right() : badge.left() - column.left();
        QVERIFY(qAbs(margin) <= 1);
    }

    void sheetHasRoundUpperCorners_data()
    {
        QTest::addColumn<QSize>("size");

        QTest::newRow("phone") << QSize(540, 960);
        QTest::newRow("tablet") << QSize(1280, 800);
        QTest::newRow("full height") << QSize(320, 320);
    }

    void sheetHasRoundUpperCorners()
    {
        QFETCH(QSize, size);
        const ShownDialog dialog(PackageTexts::ordinary(), size);
        const QImage picture = dialog.picture();
        const QRect sheet = dialog.place("page").toRect();
        const QRgb behind = picture.pixel(0, 0);
        int top = 0;
        while (picture.pixel(sheet.center().x(), top) == behind) {
            ++top;
        }
        const auto freePlaces = [&](int y) {
            return qMakePair(lengthOf(behind, picture, QPoint(sheet.left(), y), 1),
                             lengthOf(behind, picture, QPoint(sheet.right(), y), -1));
        };

        const int radius = 16;
        for (int y = 0; y < radius; ++y) {
            // At the lower edge of the row.
            const double expected = radius - std::sqrt(radius * radius - std::pow(radius - y - 1, 2));
            const auto [left, right] = freePlaces(top + y);
            QVERIFY(qAbs(left - expected) <= 1);
            QCOMPARE(right, left);
        }
        for (int y = top + radius; y < size.height(); ++y) {
            QCOMPARE(freePlaces(y), qMakePair(0, 0));
        }
    }

    void arrowIsAtTheEndOfTheFile_data() { addFontsAndLocales(); }

    // It points down, and up when the path is open.
    void arrowIsAtTheEndOfTheFile()
    {
        QFETCH(int, fontSize);
        QFETCH(QLocale, locale);
        QFETCH(bool, mirrored);
        setFontSize(fontSize);
        setLocale(locale);
        PackageTexts texts;
        texts.fileName = QLatin1Char('/') + QStringLiteral("folder/").repeated(50) + QStringLiteral("package.rpm");
        const ShownDialog dialog(&texts, TallScreen);
        const auto check = [&](bool isOpen) {
            dialog.awaitFrame();
            const QImage picture = dialog.picture();
            const QRect end = beside(dialog.place("file"), dialog.place("path"), !mirrored);
            const QRect arrow = inkIn(picture, end);
            QVERIFY(qAbs(arrow.width() - 0.7 * fontSize) <= 2);
            QVERIFY(qAbs(QRectF(arrow).center().y() - middleOfFirstLine(dialog, "fileName")) <= 2);
            const QRectF column = dialog.place("question");
            const double margin = mirrored ? arrow.left() - column.left() : column.right() - QRectF(arrow).right();
            QVERIFY(qAbs(margin) <= 1);

            const QRect rows(end.left(), arrow.top(), end.width(), arrow.height() / 3);
            const QRect upper = inkIn(picture, rows);
            const QRect lower = inkIn(picture, rows.translated(0, arrow.height() - rows.height()));
            const QRect &tip = isOpen ? upper : lower;
            const QRect &arms = isOpen ? lower : upper;
            QVERIFY(tip.width() <= 0.7 * arms.width());
            QVERIFY(qAbs(QRectF(tip).center().x() - QRectF(arrow).center().x()) <= 1);
        };

        for (const bool isOpen : {false, true, false}) {
            check(isOpen);
            QTest::mouseClick(dialog.window(), Qt::LeftButton, {}, dialog.middle("file"));
        }
    }
};

DIALOG_TEST_MAIN(DialogShapesTest)

#include "tst_dialogshapes.moc"
