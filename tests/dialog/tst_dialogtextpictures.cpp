// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "pictures.h"
#include "showndialog.h"

#include <QPainter>

namespace {

/** The picture of an item alone, of a text without the room beside it. */
QImage pictureOf(const ShownDialog &dialog, const char *id)
{
    const double left = dialog.property(id, "leftPadding").toReal();
    const double right = dialog.property(id, "rightPadding").toReal();
    return dialog.picture().copy(dialog.place(id).adjusted(left, 0, -right, 0).toAlignedRect());
}

/** The mean difference between the ink of two pictures of the same letters, or of others, from 0 to 255. */
double difference(const QImage &one, const QImage &other)
{
    // Letters may begin anywhere in a pixel.
    const auto shape = [](const QImage &picture) {
        return picture.copy(inkOf(picture))
                .convertToFormat(QImage::Format_Grayscale8)
                .scaled(64, 16, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const QImage a = shape(one);
    const QImage b = shape(other);
    int sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            sum += qAbs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y)));
        }
    }
    return double(sum) / (a.width() * a.height());
}

// Other letters differ by about a hundred.
constexpr double SameLetters = 30;

/** The right end of the ink of a picture, a number of pixels wide. */
QImage endOf(const QImage &picture, int width)
{
    return picture.copy(inkOf(picture).right() + 1 - width, 0, width, picture.height());
}

}

/** Pictures of the package's texts. Whatever these are, they look right, and change nothing beside them. */
class DialogTextPicturesTest : public DialogTest
{
    Q_OBJECT

private Q_SLOTS:
    void extensionIsAtTheRightEnd_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QLocale>("locale");

        const QString names[] = {
                QStringLiteral("invoice.pdf\u202empr.א.rpm"),
                QStringLiteral("א.rpm"),
                QStringLiteral("invoice.pdf א.rpm"),
                QStringLiteral("מסמך 1.pdf.rpm"),
                QStringLiteral("مرحبا.rpm"),
                QStringLiteral("٣٢١.rpm"),
        };
        for (const char *locale : {"C", "he", "ar"}) {
            for (const QString &name : names) {
                QTest::addRow("%s, %s", locale, qPrintable(name)) << name << QLocale(QLatin1String(locale));
            }
        }
    }

    // Letters of another direction do not move a file's extension, in no language.
    void extensionIsAtTheRightEnd()
    {
        QFETCH(QString, fileName);
        QFETCH(QLocale, locale);
        setFontSize(36);
        PackageTexts texts;
        texts.fileName = QStringLiteral("/home/user/rpm");
        const ShownDialog right(&texts, QSize(800, 800));
        // The letters after the full stop.
        const QImage extension = pictureOf(right, "fileName");
        const int width = inkOf(extension).width();
        texts.fileName = QStringLiteral("/home/user/mpr");
        const ShownDialog wrong(&texts, QSize(800, 800));
        QVERIFY(difference(endOf(pictureOf(wrong, "fileName"), width), endOf(extension, width)) > 2 * SameLetters);

        setLocale(locale);
        texts.fileName = QStringLiteral("/home/user/") + fileName;
        const ShownDialog dialog(&texts, QSize(800, 800));

        const double found = difference(endOf(pictureOf(dialog, "fileName"), width), endOf(extension, width));
        QVERIFY2(found < SameLetters, qPrintable(QString::number(found)));
    }

    void packageTextsLookTheSameInAllLanguages_data()
    {
        QTest::addColumn<QString>("text");

        QTest::newRow("left to right") << QStringLiteral("lighthouse tides");
        QTest::newRow("right to left") << QStringLiteral("לוח גאות");
        QTest::newRow("both") << QStringLiteral("lighthouse לוח 2");
    }

    // A text of the other direction is whole, and begins where the system's texts begin.
    void packageTextsLookTheSameInAllLanguages()
    {
        QFETCH(QString, text);
        PackageTexts texts;
        texts.name = text;
        texts.fileName = QLatin1Char('/') + text + QStringLiteral("/x.rpm");
        setFontSize(30);
        for (const char *item : {"name", "fileName", "folder"}) {
            setLocale(QLocale::c());
            const ShownDialog english(&texts);
            const QImage left = pictureOf(english, item);
            setLocale(QLocale(QLocale::Arabic));
            const ShownDialog arabic(&texts);
            const QImage right = pictureOf(arabic, item);

            // Letters may begin beside their place.
            QVERIFY(inkOf(left).left() <= 3);
            QVERIFY(inkOf(left).right() < left.width() - 20);
            QVERIFY(inkOf(right).right() >= right.width() - 4);
            QVERIFY(inkOf(right).left() > 20);
            QVERIFY(qAbs(inkOf(right).width() - inkOf(left).width()) <= 1);
            const double found = difference(right, left);
            QVERIFY2(found < SameLetters, qPrintable(QString::number(found)));
        }
    }

    // A package cannot change the system's warning, nor its badge.
    void warningLooksTheSameBesideAnyText_data()
    {
        QTest::addColumn<QString>("text");

        QTest::newRow("signs") << QStringLiteral("⚠❗⛔✔");
        QTest::newRow("emoji") << QStringLiteral("⚠\ufe0f❗\ufe0f🛑✅\ufe0f🔒").repeated(30);
        QTest::newRow("stacked marks") << QLatin1Char('a') + QString(60, QChar(0x0301)) + QString(60, QChar(0x0323));
        QTest::newRow("right to left") << QStringLiteral("\u202e\u2067שלום").repeated(30);
    }

    void warningLooksTheSameBesideAnyText()
    {
        QFETCH(QString, text);
        PackageTexts texts;
        const ShownDialog ordinary(&texts);
        const QImage expected = pictureOf(ordinary, "panel");

        texts.setAll(text);
        const ShownDialog dialog(&texts);

        QVERIFY(!expected.isNull());
        QCOMPARE(pictureOf(dialog, "panel"), expected);
    }

    void stackedMarksStayInTheirPlace_data()
    {
        QTest::addColumn<QByteArray>("item");

        for (const char *item : PackageTextItems) {
            QTest::newRow(item) << QByteArray(item);
        }
    }

    void stackedMarksStayInTheirPlace()
    {
        QFETCH(QByteArray, item);
        // The surroundings of a text look the same, whatever it is.
        const auto surroundings = [&item](const QString &text) {
            PackageTexts texts;
            texts.setAll(QStringLiteral("a"));
            texts.fileName = QStringLiteral("/a/a");
            if (item == "name") {
                texts.name = text;
            } else if (item == "version") {
                texts.version = text;
            } else if (item == "summary") {
                texts.summary = text;
            } else if (item == "fileName") {
                texts.fileName = QStringLiteral("/a/") + text;
            } else {
                texts.fileName = QLatin1Char('/') + text + QStringLiteral("/a");
            }
            const ShownDialog dialog(&texts);
            QImage picture = dialog.picture();
            QPainter(&picture).fillRect(dialog.place(item.constData()), Qt::black);
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

DIALOG_TEST_MAIN(DialogTextPicturesTest)

#include "tst_dialogtextpictures.moc"
