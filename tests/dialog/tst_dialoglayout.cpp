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

PackageTexts *shortTexts()
{
    static PackageTexts texts;
    return &texts;
}

}

/** Where things are, on all sorts of screens. */
class DialogLayoutTest : public DialogTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void actionsFit_data();
    void actionsFit();
    void actionsFitAfterTurning();
    void everythingFitsOrScrolls_data();
    void everythingFitsOrScrolls();
    void longTextsLeaveTheWarningInSight_data();
    void longTextsLeaveTheWarningInSight();
    void pathAloneIsInTheMiddleOfItsCard();
    void keysScroll();
    void fingerScrolls();
    void focusedPathIsInSight();
    void linesAreNoLongerThanReadable();

private:
    QFont m_font = QGuiApplication::font();
};

void DialogLayoutTest::cleanup()
{
    QGuiApplication::setFont(m_font);
    DialogTest::cleanup();
}

void DialogLayoutTest::actionsFit_data()
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
                        << size << scale << shortTexts() << QLocale(QLatin1String(locale));
                QTest::addRow("%dx%d, font %g, %s, long texts", size.width(), size.height(), scale, locale)
                        << size << scale << longTexts() << QLocale(QLatin1String(locale));
            }
        }
    }
}

void DialogLayoutTest::actionsFit()
{
    QFETCH(QSize, size);
    QFETCH(double, scale);
    QFETCH(PackageTexts *, texts);
    QFETCH(QLocale, locale);
    QFont font = m_font;
    font.setPixelSize(qRound(14 * scale));
    QGuiApplication::setFont(font);
    speak(locale);

    const ShownDialog dialog(texts, size);

    // This platform's density is below the least that is assumed, so a pixel is a density-independent one.
    const QRectF window(QPointF(), size);
    const QRectF cancel = ShownDialog::place(dialog.item("cancel"));
    const QRectF install = ShownDialog::place(dialog.item("install"));
    QVERIFY(window.contains(cancel));
    QVERIFY(window.contains(install));
    QVERIFY(!cancel.intersects(install));
    for (const char *target : {"cancel", "install", "file"}) {
        QVERIFY(dialog.item(target)->width() >= 44);
        QVERIFY(dialog.item(target)->height() >= 44);
    }
    for (const char *button : {"cancel", "install"}) {
        const auto *label = dialog.item(button)->property("contentItem").value<QQuickItem *>();
        QVERIFY(!label->property("truncated").toBool());
    }
}

void DialogLayoutTest::actionsFitAfterTurning()
{
    const ShownDialog dialog(longTexts(), Phone);

    dialog.window()->resize(Phone.transposed());
    dialog.awaitFrame();

    const QRectF window(QPointF(), Phone.transposed());
    QTRY_VERIFY(window.contains(ShownDialog::place(dialog.item("cancel"))));
    QVERIFY(window.contains(ShownDialog::place(dialog.item("install"))));
}

void DialogLayoutTest::everythingFitsOrScrolls_data()
{
    actionsFit_data();
}

void DialogLayoutTest::everythingFitsOrScrolls()
{
    QFETCH(QSize, size);
    QFETCH(double, scale);
    QFETCH(PackageTexts *, texts);
    QFETCH(QLocale, locale);
    QFont font = m_font;
    font.setPixelSize(qRound(14 * scale));
    QGuiApplication::setFont(font);
    speak(locale);

    const ShownDialog dialog(texts, size);

    const QQuickItem *body = dialog.item("body");
    const QRectF actions = ShownDialog::place(dialog.item("cancel")) | ShownDialog::place(dialog.item("install"));
    const QRectF view = ShownDialog::place(body);
    QVERIFY(!view.intersects(actions));
    QVERIFY(view.height() >= 100);
    QCOMPARE(body->property("interactive").toBool(), body->property("contentHeight").toReal() > view.height());
    QCOMPARE(body->clip(), body->property("interactive").toBool());
    for (const QQuickItem *text : dialog.texts()) {
        const QRectF place = ShownDialog::place(text);
        QVERIFY(place.left() >= 0 && place.right() <= size.width());
    }
}

void DialogLayoutTest::longTextsLeaveTheWarningInSight_data()
{
    QTest::addColumn<QSize>("size");

    QTest::newRow("phone") << Phone;
    QTest::newRow("phone on its side") << Phone.transposed();
    QTest::newRow("small phone") << QSize(320, 480);
}

void DialogLayoutTest::longTextsLeaveTheWarningInSight()
{
    QFETCH(QSize, size);
    const ShownDialog dialog(longTexts(), size);

    QVERIFY(ShownDialog::place(dialog.item("body")).contains(ShownDialog::place(dialog.item("warning"))));
}

void DialogLayoutTest::pathAloneIsInTheMiddleOfItsCard()
{
    PackageTexts texts;
    texts.name.clear();
    texts.version.clear();
    texts.summary.clear();
    const ShownDialog dialog(&texts);

    QCOMPARE(ShownDialog::place(dialog.item("file")).center(), ShownDialog::place(dialog.item("card")).center());
}

void DialogLayoutTest::keysScroll()
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

void DialogLayoutTest::fingerScrolls()
{
    const ShownDialog dialog(longTexts(), QSize(320, 480));
    const QQuickItem *body = dialog.item("body");

    QTest::mousePress(dialog.window(), Qt::LeftButton, {}, QPoint(150, 300));
    for (int y = 290; y >= 100; y -= 10) {
        QTest::mouseMove(dialog.window(), QPoint(150, y));
    }
    QTest::mouseRelease(dialog.window(), Qt::LeftButton, {}, QPoint(150, 100));

    QTRY_VERIFY(body->property("contentY").toReal() > 0);
    QCOMPARE(dialog.requested() + dialog.dismissed(), 0);
}

void DialogLayoutTest::focusedPathIsInSight()
{
    const ShownDialog dialog(longTexts(), QSize(320, 480));
    const auto *file = dialog.item("file");
    const QRectF view = ShownDialog::place(dialog.item("body"));
    QVERIFY(!view.contains(ShownDialog::place(file)));

    QTest::keyClick(dialog.window(), Qt::Key_Backtab, Qt::ShiftModifier);

    QCOMPARE(dialog.window()->activeFocusItem(), file);
    QVERIFY(view.contains(ShownDialog::place(file)));

    QTest::keyClick(dialog.window(), Qt::Key_Return);
    dialog.awaitFrame();

    // Too long to be seen at once: from its beginning.
    QVERIFY(file->height() > view.height());
    QCOMPARE(ShownDialog::place(file).top(), view.top());
}

void DialogLayoutTest::linesAreNoLongerThanReadable()
{
    const ShownDialog dialog(longTexts(), QSize(2560, 1600));

    const QRectF actions = ShownDialog::place(dialog.item("cancel")) | ShownDialog::place(dialog.item("install"));
    QVERIFY(actions.width() <= 700);
    QVERIFY(dialog.item("summary")->width() <= 700);
    QVERIFY(qAbs(actions.center().x() - 1280) <= 1);
}

int main(int argc, char **argv)
{
    return runDialogTest<DialogLayoutTest>(argc, argv);
}

#include "tst_dialoglayout.moc"
