// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "pointers.h"
#include "showndialog.h"

namespace {

PackageTexts *longTexts()
{
    static PackageTexts texts;
    texts.summary = QStringLiteral("many words ").repeated(1000);
    texts.fileName = QLatin1Char('/') + QStringLiteral("folder/").repeated(500) + QStringLiteral("package.rpm");
    return &texts;
}

void scrollTo(const ShownDialog &dialog, qreal position)
{
    dialog.item("body")->setProperty("contentY", position);
}

void openPath(const ShownDialog &dialog)
{
    QTest::keyClick(dialog.window(), Qt::Key_Backtab, Qt::ShiftModifier);
    QTest::keyClick(dialog.window(), Qt::Key_Space);
    dialog.awaitFrame();
}

/** Whether all of the warning is in sight, or the last line of one that is taller than its place. */
bool isWarningInSight(const ShownDialog &dialog)
{
    const QRectF view = dialog.place("body");
    const QRectF panel = dialog.place("panel");
    const qreal line =
            dialog.property("warning", "contentHeight").toReal() / dialog.property("warning", "lineCount").toInt();
    const qreal lastLine = panel.bottom() - dialog.property("warning", "bottomPadding").toReal() - line;
    const qreal needed = panel.height() <= view.height() ? panel.top() : lastLine;
    return panel.bottom() <= view.bottom() + 1 && needed >= view.top() - 1;
}

}

/** A tap installs only if the warning is in sight (Known behaviour 71). */
class DialogWarningTest : public DialogTest
{
    Q_OBJECT

private:
    /** Screens that do not show all of the long texts. */
    static void addScreens()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("fontSize");
        QTest::addColumn<int>("places");

        // How many places as high as its own the warning fills.
        QTest::newRow("phone") << QSize(360, 640) << 22 << 0;
        QTest::newRow("on its side") << QSize(640, 360) << 20 << 0;
        QTest::newRow("small phone, large font") << QSize(320, 480) << 28 << 0;
        QTest::newRow("warning is taller than its place") << QSize(320, 320) << 28 << 1;
        QTest::newRow("warning is much taller than its place") << QSize(320, 240) << 28 << 2;
    }

private Q_SLOTS:
    void earlyTapNeverScrolls_data() { addScreens(); }

    void earlyTapNeverScrolls()
    {
        QFETCH(QSize, size);
        QFETCH(int, fontSize);
        setFontSize(fontSize);
        const ShownDialog dialog(longTexts(), size);
        dialog.keepUnready();
        const QQuickItem *body = dialog.item("body");
        const qreal end = body->property("contentHeight").toReal() - body->height();

        for (const qreal position : {0.0, end}) {
            scrollTo(dialog, position);
            for (const Pointer &pointer : pointers()) {
                pointer.tap(dialog.window(), dialog.middle("install"));
                dialog.awaitFrames();
                QCOMPARE(body->property("contentY").toReal(), position);
            }
        }
        QCOMPARE(dialog.answers(), 0);
    }

    void warningIsBroughtIntoSightFirst_data() { addScreens(); }

    void warningIsBroughtIntoSightFirst()
    {
        QFETCH(QSize, size);
        QFETCH(int, fontSize);
        QFETCH(int, places);
        setFontSize(fontSize);
        for (const bool fromTheEnd : {false, true}) {
            const ShownDialog dialog(longTexts(), size);
            const QQuickItem *body = dialog.item("body");
            QCOMPARE(int(dialog.item("panel")->height() / body->height()), places);
            openPath(dialog);
            scrollTo(dialog, fromTheEnd ? body->property("contentHeight").toReal() - body->height() : 0);
            const bool wasInSight = isWarningInSight(dialog);
            QVERIFY(!fromTheEnd || !wasInSight);

            int taps = 0;
            while (dialog.answers() == 0) {
                QVERIFY(++taps < 10);
                const bool before = isWarningInSight(dialog);
                dialog.makeReady();
                tap(dialog.window(), dialog.middle("install"));
                QCOMPARE(dialog.requested(), before ? 1 : 0);
                QVERIFY(before || !dialog.isReady());
            }
            QCOMPARE(taps == 1, wasInSight);
            QVERIFY(!fromTheEnd || taps == 2);
        }
    }

    // Known behaviour 71: a person has read a tall warning when its end is in sight.
    void endOfATallWarningIsEnough_data()
    {
        QTest::addColumn<double>("end");
        QTest::addColumn<bool>("installs");

        // The end's place, from the upper edge of the view, in its height.
        QTest::newRow("a line too low") << 1.1 << false;
        QTest::newRow("at the lower edge") << 1.0 << true;
        QTest::newRow("higher") << 0.7 << true;
        QTest::newRow("in the middle") << 0.5 << true;
        QTest::newRow("out of sight") << -0.1 << false;
        QTest::newRow("far out of sight") << -5.0 << false;
    }

    void endOfATallWarningIsEnough()
    {
        QFETCH(double, end);
        QFETCH(bool, installs);
        setFontSize(28);
        const ShownDialog dialog(longTexts(), QSize(320, 320));
        openPath(dialog);
        const QRectF view = dialog.place("body");
        QVERIFY(dialog.item("panel")->height() > view.height());
        scrollTo(dialog, 0);
        scrollTo(dialog, dialog.place("panel").bottom() - view.top() - end * view.height());
        QCOMPARE(dialog.place("panel").bottom(), view.top() + end * view.height());

        dialog.makeReady();
        tap(dialog.window(), dialog.middle("install"));

        QCOMPARE(dialog.requested(), installs ? 1 : 0);
        QVERIFY(isWarningInSight(dialog));
        dialog.makeReady();
        tap(dialog.window(), dialog.middle("install"));
        QCOMPARE(dialog.requested(), 1);
    }
};

DIALOG_TEST_MAIN(DialogWarningTest)

#include "tst_dialogwarning.moc"
