// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "showndialog.h"

#include <QPalette>

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

/** The colour of the nearest item that is painted behind an item. */
QColor background(const ShownDialog &dialog, QQuickItem *item)
{
    for (QQuickItem *around = item->parentItem(); around; around = around->parentItem()) {
        const auto *behind = around->property("background").value<QQuickItem *>();
        if (behind && behind->isVisible()) {
            return behind->property("color").value<QColor>();
        }
        if (around->inherits("QQuickRectangle")) {
            return around->property("color").value<QColor>();
        }
    }
    return dialog.window()->color();
}

}

/** Font, direction and colours, which come from the system. */
class DialogLookTest : public DialogTest
{
    Q_OBJECT

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
        QVERIFY(heights.size() >= 8);
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
        for (const char *text : {"question", "name", "version", "summary", "path", "warning"}) {
            QCOMPARE(dialog.item(text)->property("effectiveHorizontalAlignment").toInt(),
                     int(mirrored ? Qt::AlignRight : Qt::AlignLeft));
        }
    }

    void takesItsColoursFromThePalette_data()
    {
        QTest::addColumn<QPalette>("palette");

        QPalette dark(QColor(0x30, 0x33, 0x38), QColor(0x1b, 0x1d, 0x21));
        dark.setColor(QPalette::Base, QColor(0x26, 0x29, 0x2e));
        QPalette light(QColor(0xdd, 0xdd, 0xdd), QColor(0xf4, 0xf4, 0xf4));
        light.setColor(QPalette::Base, Qt::white);
        QTest::newRow("dark") << dark;
        QTest::newRow("light") << light;
        QTest::newRow("black and yellow") << QPalette(Qt::yellow, Qt::black, Qt::yellow, Qt::black, Qt::yellow,
                                                      Qt::yellow, Qt::yellow, Qt::black, Qt::black);
    }

    void takesItsColoursFromThePalette()
    {
        QFETCH(QPalette, palette);
        palette.setColor(QPalette::Highlight, QColor(0x10, 0x60, 0xa0));
        palette.setColor(QPalette::HighlightedText, Qt::white);
        QGuiApplication::setPalette(palette);

        const ShownDialog dialog;

        QCOMPARE(dialog.window()->color(), palette.color(QPalette::Base));
        QVERIFY(dialog.texts().size() >= 8);
        for (QQuickItem *text : dialog.texts()) {
            const double ratio = contrast(text->property("color").value<QColor>(), background(dialog, text));
            QVERIFY2(ratio >= 4.5,
                     qPrintable(QStringLiteral("%1: %2").arg(text->property("text").toString()).arg(ratio)));
        }
    }

    void actionsLookDifferent()
    {
        const ShownDialog dialog;
        const auto face = [&dialog](const char *button) {
            return dialog.item(button)->property("background").value<QQuickItem *>()->property("color").value<QColor>();
        };

        const QColor cancel = face("cancel");
        const QColor install = face("install");
        QCOMPARE(install, QGuiApplication::palette().color(QPalette::Highlight));
        QVERIFY(contrast(cancel, install) >= 3);

        const QPoint point = dialog.place("install").center().toPoint();
        QTest::mousePress(dialog.window(), Qt::LeftButton, {}, point);
        QVERIFY(face("install") != install);
        QTest::mouseRelease(dialog.window(), Qt::LeftButton, {}, point);
    }
};

DIALOG_TEST_MAIN(DialogLookTest)

#include "tst_dialoglook.moc"
