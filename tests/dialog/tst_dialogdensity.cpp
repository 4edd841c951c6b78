// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// tst_dialogdensity: runs itself once for each display of a list, in an X server of its own.

#include "dialogtest.h"
#include "showndialog.h"

#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QTest>
#include <QtMath>

namespace {

const struct
{
    const char *size;
    int dotsPerInch;
    const char *scale;
} Displays[] = {
        {"320x480", 120, "1"},     {"480x320", 640, "1"},   {"540x960", 240, "1"},   {"540x960", 240, "1.5"},
        {"960x540", 240, "1.5"},   {"720x1280", 320, "2"},  {"720x1280", 320, "1"},  {"1080x1920", 440, "1"},
        {"1080x1920", 440, "3"},   {"1920x1080", 96, "1"},  {"1280x800", 160, "1"},  {"800x1280", 213, "1.5"},
        {"1440x2560", 640, "1"},   {"1440x2560", 640, "3"}, {"2560x1600", 160, "1"}, {"2560x1600", 320, "2"},
        {"1600x2560", 320, "1.5"}, {"2560x1440", 640, "1"}, {"1280x800", 120, "1"},
};

// The variable's value, for a child, is the density of its display.
const char *const DotsPerInch = "TST_DIALOGDENSITY_DOTS_PER_INCH";

/** A density-independent pixel of the display, in the pixels of Qt, which are as large as the scale says. */
double densityIndependentPixel(const QSize &size)
{
    const double scale = qgetenv("QT_SCALE_FACTOR").toDouble();
    const double exact = qgetenv(DotsPerInch).toDouble() / scale / 160;
    // The shorter side has 320 at least.
    const double largest = qMin(4.0, qMin(size.width(), size.height()) / 320.0);
    return qBound(1.0, exact, largest);
}

struct Run
{
    QRgb colour;
    int length;
};

/** The colours of a row of pixels, one after the other. */
QVector<Run> runsOfOneColour(const QImage &picture, const QPoint &begin, const QPoint &step, int length)
{
    QVector<Run> runs;
    for (int i = 0; i < length; ++i) {
        const QRgb colour = picture.pixel(begin + i * step);
        if (runs.isEmpty() || runs.last().colour != colour) {
            runs.append({colour, 0});
        }
        ++runs.last().length;
    }
    return runs;
}

}

/** Sizes on the display that the program has been started on. */
class DialogDensityTest : public DialogTest
{
    Q_OBJECT

private:
    static void addFontsAndLocales()
    {
        QTest::addColumn<int>("fontSize");
        QTest::addColumn<QLocale>("locale");

        for (const int fontSize : {10, 20, 28, 48}) {
            for (const char *locale : {"C", "de", "ar"}) {
                QTest::addRow("font %d, %s", fontSize, locale) << fontSize << QLocale(QLatin1String(locale));
            }
        }
    }

private Q_SLOTS:
    void everythingIsLargeEnough_data() { addFontsAndLocales(); }

    void everythingIsLargeEnough()
    {
        QFETCH(int, fontSize);
        QFETCH(QLocale, locale);
        setFontSize(fontSize);
        setLocale(locale);
        const QSize size = QGuiApplication::primaryScreen()->size();
        const double dp = densityIndependentPixel(size);

        const ShownDialog dialog(PackageTexts::ordinary(), size);

        // The dialog rounds to a quarter.
        QVERIFY(qAbs(dialog.window()->property("dp").toReal() - dp) <= 0.25);
        const double least = dp - 0.25;
        for (const char *target : {"cancel", "install", "file"}) {
            QVERIFY(dialog.item(target)->height() >= 48 * least);
            QVERIFY(dialog.item(target)->width() >= 48 * least);
        }
        const QRectF cancel = dialog.place("cancel");
        const QRectF install = dialog.place("install");
        QVERIFY(!cancel.adjusted(-8 * least, -8 * least, 8 * least, 8 * least).intersects(install));
        const QRectF window(QPointF(), size);
        QVERIFY(window.contains(cancel | install));
        QVERIFY(window.bottom() - qMax(cancel.bottom(), install.bottom()) <= 16 * dp + 5);

        const QList<QQuickItem *> texts = dialog.texts();
        QCOMPARE(texts.size(), 10);
        const QRectF view = dialog.place("body");
        for (const QQuickItem *text : texts) {
            const QString what = text->property("text").toString();
            QVERIFY2(text->property("font").value<QFont>().pixelSize() >= 12 * least, qPrintable(what));
            const QRectF place = ShownDialog::place(text);
            QVERIFY2(place.left() >= 0 && place.right() <= size.width(), qPrintable(what));
            for (const QQuickItem *other : texts) {
                QVERIFY2(text == other || !place.intersects(ShownDialog::place(other) & view), qPrintable(what));
            }
        }
        for (const char *text : {"question", "warning", "label", "cancelLabel", "installLabel"}) {
            QVERIFY2(!dialog.property(text, "truncated").toBool(), text);
        }
        for (const char *text : {"name", "version", "badge"}) {
            QVERIFY2(view.contains(dialog.place(text)), text);
        }
    }

    void outlinesAreWholePixels_data()
    {
        QTest::addColumn<QByteArray>("control");
        QTest::addColumn<int>("hairlines");

        QTest::newRow("cancel") << QByteArray("cancel") << 1;
        QTest::newRow("install") << QByteArray("install") << 1;
        QTest::newRow("install, focused") << QByteArray("install") << 3;
    }

    // A line that began or ended within a pixel would be blurred there.
    void outlinesAreWholePixels()
    {
        QFETCH(QByteArray, control);
        QFETCH(int, hairlines);
        const QSize size = QGuiApplication::primaryScreen()->size();
        const ShownDialog dialog(PackageTexts::ordinary(), size);
        dialog.makeReady();
        if (hairlines > 1) {
            QTest::keyClick(dialog.window(), Qt::Key_Tab);
            dialog.awaitFrame();
        }
        const QImage picture = dialog.picture();
        const double scale = picture.devicePixelRatio();
        const QRectF place = dialog.place(control.constData());
        const QRect pixels = QRectF(scale * place.topLeft(), scale * place.size()).toRect();
        // The dialog rounds to a quarter, then to whole pixels of Qt, of which the scale makes others.
        const double width = hairlines * qRound(qRound(4 * densityIndependentPixel(size)) / 4.0) * scale;

        const struct
        {
            QPoint edge;
            QPoint inwards;
        } sides[] = {
                {{pixels.left(), pixels.center().y()}, {1, 0}},
                {{pixels.right(), pixels.center().y()}, {-1, 0}},
                {{pixels.center().x(), pixels.top()}, {0, 1}},
                {{pixels.center().x(), pixels.bottom()}, {0, -1}},
        };
        for (const auto &[edge, inwards] : sides) {
            const QVector<Run> runs = runsOfOneColour(picture, edge - 3 * inwards, inwards, qCeil(width) + 8);
            QCOMPARE(runs.size(), 3);
            QVERIFY(qAbs(runs[0].length - 3) <= 1);
            QVERIFY(runs[1].length >= qFloor(width) && runs[1].length <= qCeil(width));
            QVERIFY(runs[0].colour != runs[2].colour);
        }
    }

    void clippingCutsNoLetter_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("fontSize");

        const struct
        {
            const char *script;
            QString text;
        } texts[] = {
                {"Latin", QStringLiteral("Ångström jogging ÀÇ jpqy")},
                {"Vietnamese", QStringLiteral("Ẫ Ỗ Ặ lịch thủy triều")},
                {"Arabic", QStringLiteral("جدول المد والجزر اليومي")},
                {"Hebrew", QStringLiteral("לוח גאות ושפל יומי")},
                {"Thai", QStringLiteral("ปู่ที่ฐู ตารางน้ำ")},
                {"Devanagari", QStringLiteral("ज्वार तालिका र्हृ दूँ")},
        };
        for (const auto &[script, text] : texts) {
            for (const int fontSize : {10, 28}) {
                QTest::addRow("%s, font %d", script, fontSize) << text << fontSize;
            }
        }
    }

    // The package's texts are clipped because of hostile marks. Ordinary letters lose no pixel.
    void clippingCutsNoLetter()
    {
        QFETCH(QString, text);
        QFETCH(int, fontSize);
        setFontSize(fontSize);
        PackageTexts texts;
        texts.name = text;
        texts.version = text.section(QLatin1Char(' '), 0, 0);
        texts.summary = text;
        texts.fileName = QStringLiteral("/%1/%1.rpm").arg(text);
        const ShownDialog dialog(&texts, QSize(360, 640).boundedTo(QGuiApplication::primaryScreen()->size()));
        dialog.makeReady();
        const QImage clipped = dialog.picture();
        QVERIFY(!clipped.isNull());

        int switchedOff = 0;
        for (QQuickItem *item : dialog.texts()) {
            for (; item != dialog.item("body") && item != dialog.window()->contentItem(); item = item->parentItem()) {
                switchedOff += item->clip() ? 1 : 0;
                item->setClip(false);
            }
        }
        QVERIFY(switchedOff > 0);
        dialog.awaitFrame();

        QVERIFY(dialog.picture() == clipped);
    }
};

namespace {

int runOnDisplay(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    DialogDensityTest test;
    return QTest::qExec(&test, argc, argv);
}

/** Runs this program on a new display; whether it has succeeded. */
bool succeeds(const QString &program, const char *size, int dotsPerInch, const char *scale)
{
    QProcess server;
    server.start(QStringLiteral("Xvfb"),
                 {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                  QLatin1String(size) + QStringLiteral("x24"), QStringLiteral("-dpi"), QString::number(dotsPerInch),
                  QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    if (!server.waitForReadyRead()) {
        qFatal("No display from Xvfb: %s", qPrintable(server.errorString()));
    }
    qputenv("DISPLAY", ':' + server.readLine().trimmed());
    qputenv("QT_SCALE_FACTOR", scale);
    qputenv(DotsPerInch, QByteArray::number(dotsPerInch));
    qInfo("%s pixels, %d in an inch, scale %s", size, dotsPerInch, scale);
    const int failed = QProcess::execute(program, {});
    server.terminate();
    return server.waitForFinished() && failed == 0;
}

}

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsSet(DotsPerInch)) {
        return runOnDisplay(argc, argv);
    }
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_QUICK_BACKEND", "software");
    int failures = 0;
    for (const auto &[size, dotsPerInch, scale] : Displays) {
        failures += succeeds(QString::fromLocal8Bit(argv[0]), size, dotsPerInch, scale) ? 0 : 1;
    }
    return failures;
}

#include "tst_dialogdensity.moc"
