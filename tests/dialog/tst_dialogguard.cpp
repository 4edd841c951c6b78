// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "showndialog.h"

#include <QAccessible>
#include <QElapsedTimer>
#include <QWindow>

#include <functional>

namespace {

using Tap = std::function<void(QWindow *window, const QPoint &point)>;

// In milliseconds.
constexpr int Rest = 700;
constexpr int Never = 1 << 30;

QTouchDevice *touchScreen()
{
    static QTouchDevice *screen = QTest::createTouchDevice();
    return screen;
}

void click(QWindow *window, const QPoint &point)
{
    QTest::mouseClick(window, Qt::LeftButton, {}, point);
}

void tap(QWindow *window, const QPoint &point)
{
    QTest::touchEvent(window, touchScreen()).press(0, point);
    QTest::touchEvent(window, touchScreen()).release(0, point);
}

void tapWithAnotherFingerDown(QWindow *window, const QPoint &point)
{
    const QPoint elsewhere(5, 5);
    QTest::touchEvent(window, touchScreen()).press(0, elsewhere);
    QTest::touchEvent(window, touchScreen()).stationary(0).press(1, point);
    QTest::touchEvent(window, touchScreen()).stationary(0).release(1, point);
    QTest::touchEvent(window, touchScreen()).release(0, elsewhere);
}

void tapWithTwoFingers(QWindow *window, const QPoint &point)
{
    const QPoint beside = point + QPoint(20, 5);
    QTest::touchEvent(window, touchScreen()).press(0, point);
    QTest::touchEvent(window, touchScreen()).stationary(0).press(1, beside);
    QTest::touchEvent(window, touchScreen()).release(0, point).stationary(1);
    QTest::touchEvent(window, touchScreen()).release(1, beside);
}

void doubleClick(QWindow *window, const QPoint &point)
{
    QTest::mouseClick(window, Qt::LeftButton, {}, point);
    QTest::mouseDClick(window, Qt::LeftButton, {}, point);
}

// A pen that nobody listens to acts as a mouse.
void touchWithPen(QWindow *window, const QPoint &point)
{
    const QPoint onScreen = window->mapToGlobal(point);
    for (const Qt::MouseButtons buttons : {Qt::MouseButtons(Qt::LeftButton), Qt::MouseButtons()}) {
        QTabletEvent event(buttons ? QEvent::TabletPress : QEvent::TabletRelease, point, onScreen, QTabletEvent::Stylus,
                           QTabletEvent::Pen, buttons ? 1 : 0, 0, 0, 0, 0, 0, Qt::NoModifier, 1, Qt::LeftButton,
                           buttons);
        event.ignore();
        QCoreApplication::sendEvent(window, &event);
        if (!event.isAccepted()) {
            QMouseEvent mouse(buttons ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, point, point, onScreen,
                              Qt::LeftButton, buttons, Qt::NoModifier, Qt::MouseEventNotSynthesized);
            QCoreApplication::sendEvent(window, &mouse);
        }
    }
}

const struct
{
    const char *name;
    Tap tap;
} Pointers[] = {
        {"mouse", click},      {"mouse, twice", doubleClick},
        {"touch", tap},        {"second finger", tapWithAnotherFingerDown},
        {"pen", touchWithPen},
};

QPoint middle(const ShownDialog &dialog, const char *id)
{
    return dialog.place(id).center().toPoint();
}

/** A place in sight, by its name: the part of an item that is in sight, or the free space above the sheet. */
QPoint spot(const ShownDialog &dialog, const char *name)
{
    if (qstrcmp(name, "space") == 0) {
        return {5, 5};
    }
    QRectF place = dialog.place(name);
    if (dialog.item("body")->isAncestorOf(dialog.item(name))) {
        place &= dialog.place("body");
    }
    return place.center().toPoint();
}

// All places that a pointer can touch without an answer, but "Install".
const char *const PlacesWithoutAnswer[] = {"space", "question", "panel", "file", "page"};

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

void press(const ShownDialog &dialog, const char *id)
{
    QAccessible::queryAccessibleInterface(dialog.item(id))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
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

/** Waits until the dialog has been painted a few times, and all that follows has happened. */
void awaitFrames(const ShownDialog &dialog)
{
    for (int i = 0; i < 5; ++i) {
        dialog.awaitFrame();
        QCoreApplication::processEvents();
    }
}

}

Q_DECLARE_METATYPE(Tap)

/** A tap that was not meant for the dialog installs nothing (Known behaviour 70, 71). */
class DialogGuardTest : public DialogTest
{
    Q_OBJECT

private:
    static void addPointers()
    {
        QTest::addColumn<Tap>("tap");
        for (const auto &pointer : Pointers) {
            QTest::newRow(pointer.name) << pointer.tap;
        }
    }

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
    void initTestCase() { QAccessible::setActive(true); }

    void installTakesNoPointerAtFirst_data() { addPointers(); }

    void installTakesNoPointerAtFirst()
    {
        QFETCH(Tap, tap);
        QElapsedTimer sinceShown;
        sinceShown.start();
        const ShownDialog dialog;
        QCOMPARE(dialog.rest()->property("interval").toInt(), Rest);

        dialog.awaitReady();
        QVERIFY(sinceShown.elapsed() >= Rest);
        QCOMPARE(dialog.answers(), 0);

        tap(dialog.window(), middle(dialog, "install"));
        QCOMPARE(dialog.requested(), 1);
        QCOMPARE(dialog.dismissed(), 0);
    }

    void prematureTapStartsTheTimeAnew_data()
    {
        QTest::addColumn<Tap>("tap");
        QTest::addColumn<QByteArray>("place");

        for (const auto &pointer : Pointers) {
            QTest::addRow("%s on install", pointer.name) << pointer.tap << QByteArray("install");
            for (const char *place : PlacesWithoutAnswer) {
                QTest::addRow("%s on %s", pointer.name, place) << pointer.tap << QByteArray(place);
            }
        }
    }

    void prematureTapStartsTheTimeAnew()
    {
        QFETCH(Tap, tap);
        QFETCH(QByteArray, place);
        const ShownDialog dialog;
        dialog.rest()->setProperty("interval", Never);
        dialog.awaitFrame();
        QTRY_VERIFY(dialog.rest()->property("running").toBool());

        QSignalSpy stoppedOrStarted(dialog.rest(), SIGNAL(runningChanged()));
        tap(dialog.window(), spot(dialog, place.constData()));
        QVERIFY(!stoppedOrStarted.isEmpty());
        QCOMPARE(dialog.answers(), 0);

        QTRY_VERIFY(dialog.rest()->property("running").toBool());
        dialog.makeReady();
        QCOMPARE(dialog.answers(), 0);
        tap(dialog.window(), middle(dialog, "install"));
        QCOMPARE(dialog.requested(), 1);
    }

    void laterTapElsewhereChangesNothing_data()
    {
        QTest::addColumn<Tap>("tap");
        QTest::addColumn<QByteArray>("place");

        for (const auto &pointer : Pointers) {
            for (const char *place : PlacesWithoutAnswer) {
                QTest::addRow("%s on %s", pointer.name, place) << pointer.tap << QByteArray(place);
            }
        }
    }

    void laterTapElsewhereChangesNothing()
    {
        QFETCH(Tap, tap);
        QFETCH(QByteArray, place);
        const ShownDialog dialog;
        dialog.makeReady();
        QSignalSpy readyChanged(dialog.window(), SIGNAL(readyChanged()));

        tap(dialog.window(), spot(dialog, place.constData()));

        QVERIFY(dialog.isReady());
        QVERIFY(readyChanged.isEmpty());
        QCOMPARE(dialog.answers(), 0);
    }

    void tappingNeverInstalls_data()
    {
        addPointers();
        QTest::newRow("two fingers") << Tap(tapWithTwoFingers);
    }

    void tappingNeverInstalls()
    {
        QFETCH(Tap, tap);
        const int attempts = 5;
        for (int i = 0; i < attempts; ++i) {
            QElapsedTimer sinceTap;
            sinceTap.start();
            const ShownDialog dialog;
            QElapsedTimer sinceShown;
            sinceShown.start();

            // A machine that is too busy for the tapping allows the answer.
            bool isInTime = true;
            while (isInTime && sinceShown.elapsed() < 2 * Rest) {
                QTest::qWait(20);
                tap(dialog.window(), middle(dialog, "install"));
                isInTime = sinceTap.restart() < Rest;
                QVERIFY(!isInTime || dialog.answers() == 0);
            }
            if (isInTime) {
                return;
            }
        }
        QSKIP("The machine is too busy to tap often enough");
    }

    void earlyPressIsTooEarlyForItsWholeLength_data()
    {
        QTest::addColumn<bool>("byTouch");
        QTest::addColumn<QByteArray>("place");

        for (const bool byTouch : {false, true}) {
            const char *pointer = byTouch ? "touch" : "mouse";
            for (const char *place : {"install", "cancel"}) {
                QTest::addRow("%s on %s", pointer, place) << byTouch << QByteArray(place);
            }
            for (const char *place : PlacesWithoutAnswer) {
                QTest::addRow("%s on %s", pointer, place) << byTouch << QByteArray(place);
            }
        }
    }

    void earlyPressIsTooEarlyForItsWholeLength()
    {
        QFETCH(bool, byTouch);
        QFETCH(QByteArray, place);
        const ShownDialog dialog;
        dialog.rest()->setProperty("interval", Never);
        const QPoint point = spot(dialog, place.constData());
        // The finger slips off "Cancel", so that it does not answer.
        const QPoint end = place == "cancel" ? QPoint(5, 5) : point;

        if (byTouch) {
            QTest::touchEvent(dialog.window(), touchScreen()).press(0, point);
        } else {
            QTest::mousePress(dialog.window(), Qt::LeftButton, {}, point);
        }
        dialog.rest()->setProperty("interval", 0);
        awaitFrames(dialog);
        QVERIFY(!dialog.isReady());
        if (byTouch) {
            QTest::touchEvent(dialog.window(), touchScreen()).move(0, end);
            QTest::touchEvent(dialog.window(), touchScreen()).release(0, end);
        } else {
            QTest::mouseMove(dialog.window(), end);
            QTest::mouseRelease(dialog.window(), Qt::LeftButton, {}, end);
        }

        QCOMPARE(dialog.answers(), 0);
        dialog.awaitReady();
        QCOMPARE(dialog.answers(), 0);
    }

    void cancelTakesPointersAtOnce_data() { addPointers(); }

    void cancelTakesPointersAtOnce()
    {
        QFETCH(Tap, tap);
        const ShownDialog dialog;
        dialog.rest()->setProperty("interval", Never);

        tap(dialog.window(), middle(dialog, "cancel"));

        QCOMPARE(dialog.dismissed(), 1);
        QCOMPARE(dialog.requested(), 0);
    }

    void cancelTakesPointersWhileAnotherWindowIsActive()
    {
        const ShownDialog dialog;
        QWindow other;
        other.show();
        other.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&other));

        tap(dialog.window(), middle(dialog, "cancel"));

        QCOMPARE(dialog.dismissed(), 1);
    }

    void keysInstallAtOnce_data()
    {
        QTest::addColumn<Qt::Key>("key");

        QTest::newRow("Enter") << Qt::Key_Return;
        QTest::newRow("Enter of the number pad") << Qt::Key_Enter;
        QTest::newRow("Space") << Qt::Key_Space;
    }

    void keysInstallAtOnce()
    {
        QFETCH(Qt::Key, key);
        const ShownDialog dialog;
        dialog.rest()->setProperty("interval", Never);

        QTest::keyClick(dialog.window(), Qt::Key_Tab);
        QTest::keyClick(dialog.window(), key);

        QCOMPARE(dialog.requested(), 1);
    }

    void screenReaderInstallsAtOnce()
    {
        const ShownDialog dialog;
        dialog.rest()->setProperty("interval", Never);

        press(dialog, "install");

        QCOMPARE(dialog.requested(), 1);
    }

    void nothingMovesWhenInstallGetsReady()
    {
        const ShownDialog dialog;
        dialog.rest()->setProperty("interval", Never);
        const auto places = [&dialog] {
            QList<QRectF> found;
            for (const QQuickItem *text : dialog.texts()) {
                found.append(ShownDialog::place(text));
            }
            return found << dialog.place("install") << dialog.place("cancel");
        };
        const QList<QRectF> before = places();
        const QRect install = dialog.place("install").toRect();
        const QImage early = dialog.picture();

        dialog.makeReady();

        QCOMPARE(places(), before);
        const QImage late = dialog.picture();
        QVERIFY(early.copy(install) != late.copy(install));
        QCOMPARE(early.pixel(install.topLeft() - QPoint(3, 3)), late.pixel(install.topLeft() - QPoint(3, 3)));

        dialog.rest()->setProperty("interval", Never);
        QWindow other;
        other.show();
        other.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        dialog.awaitFrame();
        QCOMPARE(dialog.picture().copy(install), early.copy(install));
    }

    void anotherActiveWindowStartsTheTimeAnew()
    {
        const ShownDialog dialog;
        dialog.makeReady();

        QWindow other;
        other.show();
        other.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QVERIFY(!dialog.isReady());
        awaitFrames(dialog);
        QVERIFY(!dialog.isReady());
        tap(dialog.window(), middle(dialog, "install"));
        QCOMPARE(dialog.answers(), 0);

        dialog.window()->requestActivate();
        dialog.awaitReady();
        tap(dialog.window(), middle(dialog, "install"));
        QCOMPARE(dialog.requested(), 1);
    }

    void focusIsOnCancelAfterAnotherWindow_data()
    {
        QTest::addColumn<int>("tabs");

        QTest::newRow("cancel") << 0;
        QTest::newRow("install") << 1;
        QTest::newRow("file") << 2;
    }

    void focusIsOnCancelAfterAnotherWindow()
    {
        QFETCH(int, tabs);
        const ShownDialog dialog;
        for (int i = 0; i < tabs; ++i) {
            QTest::keyClick(dialog.window(), Qt::Key_Tab);
        }

        QWindow other;
        other.show();
        other.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        dialog.window()->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(dialog.window()));

        QCOMPARE(dialog.window()->activeFocusItem(), dialog.item("cancel"));
        QTest::keyClick(dialog.window(), Qt::Key_Return);
        QCOMPARE(dialog.dismissed(), 1);
        QCOMPARE(dialog.requested(), 0);
    }

    void hiddenDialogIsNotReady()
    {
        const ShownDialog dialog;
        dialog.makeReady();

        dialog.window()->hide();
        QVERIFY(!dialog.isReady());
        QTest::qWait(50);
        QVERIFY(!dialog.isReady());

        dialog.window()->show();
        dialog.window()->requestActivate();
        dialog.awaitReady();
    }

    void anotherSizeStartsTheTimeAnew_data()
    {
        QTest::addColumn<QSize>("size");

        QTest::newRow("turned") << QSize(960, 540);
        QTest::newRow("less wide") << QSize(500, 960);
        QTest::newRow("less high") << QSize(540, 900);
    }

    void anotherSizeStartsTheTimeAnew()
    {
        QFETCH(QSize, size);
        const ShownDialog dialog(PackageTexts::ordinary(), QSize(540, 960));
        dialog.makeReady();
        dialog.rest()->setProperty("interval", Never);

        dialog.window()->resize(size);

        QTRY_VERIFY(!dialog.isReady());
    }

    void earlyTapNeverScrolls_data() { addScreens(); }

    void earlyTapNeverScrolls()
    {
        QFETCH(QSize, size);
        QFETCH(int, fontSize);
        setFontSize(fontSize);
        const ShownDialog dialog(longTexts(), size);
        dialog.rest()->setProperty("interval", Never);
        const QQuickItem *body = dialog.item("body");
        const qreal end = body->property("contentHeight").toReal() - body->height();

        for (const qreal position : {0.0, end}) {
            scrollTo(dialog, position);
            for (const auto &pointer : Pointers) {
                pointer.tap(dialog.window(), middle(dialog, "install"));
                awaitFrames(dialog);
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
            press(dialog, "file");
            dialog.awaitFrame();
            scrollTo(dialog, fromTheEnd ? body->property("contentHeight").toReal() - body->height() : 0);
            const bool wasInSight = isWarningInSight(dialog);
            QVERIFY(!fromTheEnd || !wasInSight);

            int taps = 0;
            while (dialog.answers() == 0) {
                QVERIFY(++taps < 10);
                const bool before = isWarningInSight(dialog);
                dialog.makeReady();
                tap(dialog.window(), middle(dialog, "install"));
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
        press(dialog, "file");
        dialog.awaitFrame();
        const QRectF view = dialog.place("body");
        QVERIFY(dialog.item("panel")->height() > view.height());
        scrollTo(dialog, 0);
        scrollTo(dialog, dialog.place("panel").bottom() - view.top() - end * view.height());
        QCOMPARE(dialog.place("panel").bottom(), view.top() + end * view.height());

        dialog.makeReady();
        tap(dialog.window(), middle(dialog, "install"));

        QCOMPARE(dialog.requested(), installs ? 1 : 0);
        QVERIFY(isWarningInSight(dialog));
        dialog.makeReady();
        tap(dialog.window(), middle(dialog, "install"));
        QCOMPARE(dialog.requested(), 1);
    }
};

DIALOG_TEST_MAIN(DialogGuardTest)

#include "tst_dialogguard.moc"
