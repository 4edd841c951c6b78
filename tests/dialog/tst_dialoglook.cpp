// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "showndialog.h"

#include <QHash>
#include <QPalette>
#include <QSet>

#include <cmath>

namespace {

double luminance(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor &one, const QColor &other)
{
    const double a = luminance(one);
    const double b = luminance(other);
    return (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
}

const QSize TallScreen(1080, 1920);

/** How often each colour is in a part of a picture. */
QHash<QRgb, int> colours(const QImage &picture, const QRectF &part)
{
    QHash<QRgb, int> counts;
    const QRect pixels = part.toRect() & picture.rect();
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        for (int x = pixels.left(); x <= pixels.right(); ++x) {
            ++counts[picture.pixel(x, y)];
        }
    }
    return counts;
}

QRgb commonest(const QHash<QRgb, int> &counts)
{
    QRgb found = 0;
    int most = 0;
    for (auto it = counts.begin(); it != counts.end(); ++it) {
        if (it.value() > most) {
            most = it.value();
            found = it.key();
        }
    }
    return found;
}

/** The contrast between the ground of a part of a picture and the ink that is on it. */
double contrastWithin(const QImage &picture, const QRectF &part)
{
    const QHash<QRgb, int> counts = colours(picture, part);
    const QRgb ground = commonest(counts);
    double best = 1;
    // The smooth edges of letters have few pixels of each colour.
    const int enough = 4;
    for (auto it = counts.begin(); it != counts.end(); ++it) {
        if (it.value() >= enough) {
            best = qMax(best, contrast(it.key(), ground));
        }
    }
    return best;
}

/** The contrast between the outline of a control, at the middle of its left side, and the ground beside it. */
double contrastOfOutline(const QImage &picture, const QRectF &control)
{
    const QRgb ground = picture.pixel(int(control.left()) - 4, int(control.center().y()));
    double best = 1;
    for (int x = int(control.left()); x < int(control.left()) + 3; ++x) {
        best = qMax(best, contrast(picture.pixel(x, int(control.center().y())), ground));
    }
    return best;
}

/** The contrast between the ring around a focused control, at the middle of its left side, and the control's ground. */
double contrastOfRing(const QImage &picture, const QRectF &control)
{
    const QPoint edge(int(control.left()), int(control.center().y()));
    return contrast(picture.pixel(edge + QPoint(1, 0)), picture.pixel(edge + QPoint(6, 0)));
}

struct NamedPalette
{
    const char *name;
    QPalette palette;
};

QList<NamedPalette> palettes()
{
    QPalette light(QColor(0xdd, 0xdd, 0xdd), QColor(0xf4, 0xf4, 0xf4));
    light.setColor(QPalette::Base, Qt::white);
    QPalette softLight(light);
    softLight.setColor(QPalette::Base, QColor(0xfc, 0xfc, 0xf4));
    softLight.setColor(QPalette::Text, QColor(0x23, 0x26, 0x29));
    QPalette dark(QColor(0x30, 0x33, 0x38), QColor(0x1b, 0x1d, 0x21));
    dark.setColor(QPalette::Base, QColor(0x26, 0x29, 0x2e));
    QPalette softDark(QColor(0x31, 0x36, 0x3b), QColor(0x31, 0x36, 0x3b));
    softDark.setColor(QPalette::Text, QColor(0xef, 0xf0, 0xf1));
    softDark.setColor(QPalette::Base, QColor(0x23, 0x26, 0x29));
    const auto onBlack = [](const QColor &ink) {
        return QPalette(ink, Qt::black, ink, Qt::black, ink, ink, ink, Qt::black, Qt::black);
    };
    return {
            {"light", light},
            {"soft light", softLight},
            {"dark", dark},
            {"soft dark", softDark},
            {"black and white", onBlack(Qt::white)},
            {"black and yellow", onBlack(Qt::yellow)},
    };
}

QPalette withHighlight(QPalette palette, const QColor &color)
{
    palette.setColor(QPalette::Highlight, color);
    palette.setColor(QPalette::HighlightedText, color);
    return palette;
}

}

/** Font, direction and colours, which come from the system. */
class DialogLookTest : public DialogTest
{
    Q_OBJECT

private:
    static void addPalettes()
    {
        QTest::addColumn<QPalette>("palette");

        for (const auto &[name, palette] : palettes()) {
            QTest::newRow(name) << withHighlight(palette, QColor(0x3d, 0x8e, 0xe6));
        }
    }

private Q_SLOTS:
    void textsFollowTheFont()
    {
        QHash<QString, qreal> heights;
        for (const int pixels : {15, 30}) {
            setFontSize(pixels);
            const ShownDialog dialog(PackageTexts::ordinary(), QSize(2000, 2000));
            for (const QQuickItem *text : dialog.texts()) {
                const QString key = text->property("text").toString();
                const qreal height = text->property("contentHeight").toReal();
                if (pixels == 15) {
                    heights.insert(key, height);
                } else {
                    QVERIFY2(height > 1.8 * heights.value(key), qPrintable(key));
                }
            }
        }
        QCOMPARE(heights.size(), 10);
    }

    void mirrorsByLocale_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<bool>("mirrored");

        QTest::newRow("English") << QLocale::c() << false;
        QTest::newRow("German") << QLocale(QLocale::German) << false;
        QTest::newRow("Arabic") << QLocale(QLocale::Arabic) << true;
        QTest::newRow("Hebrew") << QLocale(QLocale::Hebrew) << true;
        QTest::newRow("Persian") << QLocale(QLocale::Persian) << true;
        QTest::newRow("Urdu, which has no catalogue") << QLocale(QLocale::Urdu) << true;
    }

    void mirrorsByLocale()
    {
        QFETCH(QLocale, locale);
        QFETCH(bool, mirrored);
        setLocale(locale);

        const ShownDialog dialog;

        const qreal cancel = dialog.place("cancel").center().x();
        const qreal install = dialog.place("install").center().x();
        QCOMPARE(cancel > install, mirrored);
        for (const char *text : {"question", "name", "version", "summary", "fileName", "warning"}) {
            QCOMPARE(dialog.item(text)->property("effectiveHorizontalAlignment").toInt(),
                     int(mirrored ? Qt::AlignRight : Qt::AlignLeft));
        }
    }

    void isLegible_data()
    {
        QTest::addColumn<QPalette>("palette");

        for (const auto &[name, palette] : palettes()) {
            for (const char *highlight : {"#308cc6", "#3d8ee6", "black", "white", "red", "yellow", "#808080"}) {
                QTest::addRow("%s, %s", name, highlight) << withHighlight(palette, QColor(QLatin1String(highlight)));
            }
        }
    }

    void isLegible()
    {
        QFETCH(QPalette, palette);
        QGuiApplication::setPalette(palette);
        // In large letters some pixels have the full colour.
        setFontSize(40);
        PackageTexts texts;
        texts.fileName = QStringLiteral("/home/user/file.rpm");
        const ShownDialog dialog(&texts, TallScreen);
        const auto check = [&](const char *state) {
            dialog.awaitFrame();
            const QImage picture = dialog.picture();
            int checked = 0;
            for (const QQuickItem *text : dialog.texts()) {
                const QRectF place = ShownDialog::place(text);
                // The mark of a quotation stands beside its text.
                const qreal left = text->property("leftPadding").toReal();
                const double ratio = contrastWithin(picture, place.adjusted(left, 0, 0, 0));
                QVERIFY2(ratio >= 4.5,
                         qPrintable(QStringLiteral("%1, %2: %3")
                                            .arg(QLatin1String(state))
                                            .arg(text->property("text").toString())
                                            .arg(ratio)));
                ++checked;
            }
            QCOMPARE(checked, 10);
            for (const char *control : {"cancel", "install"}) {
                const double ratio = contrastOfOutline(picture, dialog.place(control));
                QVERIFY2(ratio >= 3,
                         qPrintable(QStringLiteral("%1, %2: %3")
                                            .arg(QLatin1String(state))
                                            .arg(QLatin1String(control))
                                            .arg(ratio)));
            }
            for (const char *mark : {"badge", "arrow"}) {
                const double ratio = contrastWithin(picture, dialog.place(mark).adjusted(-4, -4, 4, 4));
                QVERIFY2(ratio >= 3,
                         qPrintable(QStringLiteral("%1, %2: %3")
                                            .arg(QLatin1String(state))
                                            .arg(QLatin1String(mark))
                                            .arg(ratio)));
            }
        };

        int rings = 0;
        dialog.keepUnready();
        check("not ready");
        dialog.makeReady();
        check("ready");
        for (const char *control : {"cancel", "install", "file"}) {
            const QPoint point = dialog.middle(control);
            QTest::mouseMove(dialog.window(), point);
            check("below the pointer");
            QTest::mousePress(dialog.window(), Qt::LeftButton, {}, point);
            check("pressed");
            QTest::mouseMove(dialog.window(), QPoint(1, 1));
            QTest::mouseRelease(dialog.window(), Qt::LeftButton, {}, QPoint(1, 1));
            QTest::keyClick(dialog.window(), Qt::Key_Tab);
            check("focus moved");
            if (dialog.item("file")->hasActiveFocus()) {
                QVERIFY(contrastOfRing(dialog.picture(), dialog.place("file")) >= 3);
                ++rings;
            }
        }
        QCOMPARE(rings, 1);
        QCOMPARE(dialog.answers(), 0);
    }

    void scrollMarkIsSeen_data() { addPalettes(); }

    void scrollMarkIsSeen()
    {
        QFETCH(QPalette, palette);
        QGuiApplication::setPalette(palette);
        setFontSize(28);
        PackageTexts texts;
        texts.summary = QStringLiteral("many words ").repeated(1000);
        const ShownDialog dialog(&texts, QSize(320, 480));
        const QQuickItem *body = dialog.item("body");
        QVERIFY(body->property("interactive").toBool());
        const QRect view = dialog.place("body").toRect();
        const qreal height = view.height() * view.height() / body->property("contentHeight").toReal();
        QVERIFY(height > 20);

        // At the beginning the mark is at the upper edge, and at the end at the lower one.
        for (const bool atTheEnd : {false, true}) {
            QTest::keyClick(dialog.window(), atTheEnd ? Qt::Key_PageDown : Qt::Key_PageUp);
            QTest::keyClick(dialog.window(), atTheEnd ? Qt::Key_PageDown : Qt::Key_PageUp);
            dialog.awaitFrame();
            const QImage picture = dialog.picture();
            const int first = atTheEnd ? view.bottom() + 3 - int(height) : view.top() + 2;
            for (int y = first; y < first + int(height) - 5; ++y) {
                QVERIFY(contrast(picture.pixel(view.right() - 1, y), picture.pixel(view.right() - 7, y)) >= 3);
            }
        }
    }

    void partsHaveColoursOfTheirOwn_data() { addPalettes(); }

    void partsHaveColoursOfTheirOwn()
    {
        QFETCH(QPalette, palette);
        QGuiApplication::setPalette(palette);
        const ShownDialog dialog;
        dialog.makeReady();
        const QImage picture = dialog.picture();
        const auto ground = [&](const char *item) { return commonest(colours(picture, dialog.place(item))); };

        QCOMPARE(QColor(ground("question")), palette.color(QPalette::Base));
        QCOMPARE(ground("install"), ground("cancel"));
        const QSet<QRgb> grounds{picture.pixel(5, 5), ground("question"), ground("panel"), ground("card"),
                                 ground("cancel")};
        QCOMPARE(grounds.size(), 5);
    }

    // The button that a stranger wants to be pressed stands out by its letters alone.
    void installHasNoEmphasisButItsLetters()
    {
        const ShownDialog dialog;
        dialog.makeReady();
        const QImage picture = dialog.picture();
        const QRgb sheet = picture.pixel(dialog.place("question").toRect().topRight());

        const QRgb fill = commonest(colours(picture, dialog.place("cancel")));
        QCOMPARE(commonest(colours(picture, dialog.place("install"))), fill);
        QVERIFY(contrast(fill, sheet) < 1.5);
        QVERIFY(dialog.property("installLabel", "font").value<QFont>().bold());
        QVERIFY(!dialog.property("cancelLabel", "font").value<QFont>().bold());
        QVERIFY(dialog.property("name", "font").value<QFont>().bold());
    }

    void buttonsAnswerThePointer()
    {
        const ShownDialog dialog;
        dialog.makeReady();
        QTest::mouseMove(dialog.window(), QPoint(1, 1));
        const auto face = [&dialog](const char *button) {
            dialog.awaitFrame();
            return commonest(colours(dialog.picture(), dialog.place(button)));
        };

        for (const char *button : {"cancel", "install", "file"}) {
            const QRgb quiet = face(button);
            const QPoint point = dialog.middle(button);
            QTest::mouseMove(dialog.window(), point);
            QCOMPARE(face(button), quiet);
            QTest::mousePress(dialog.window(), Qt::LeftButton, {}, point);
            QVERIFY(face(button) != quiet);
            QTest::mouseMove(dialog.window(), QPoint(1, 1));
            QTest::mouseRelease(dialog.window(), Qt::LeftButton, {}, QPoint(1, 1));
            QTRY_COMPARE(face(button), quiet);
        }
        QCOMPARE(dialog.answers(), 0);
    }
};

DIALOG_TEST_MAIN(DialogLookTest)

#include "tst_dialoglook.moc"
