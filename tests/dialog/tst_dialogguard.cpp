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

PackageTexts *longTexts()
{
    static PackageTexts texts;
    texts.summary = QStringLiteral("many words ").repeated(1000);
    texts.fileName = QLatin1Char('/') + QStringLiteral("folder/").repeated(500) + QStringLiteral("package.rpm");
    return &texts;
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

    void prematureTapStartsTheTimeAnew_data() { addPointers(); }

    void prematureTapStartsTheTimeAnew()
    {
        QFETCH(Tap, tap);
        const ShownDialog dialog;
        dialog.rest()->setProperty("interval", Never);
        dialog.awaitFrame();
        QTRY_VERIFY(dialog.rest()->property("running").toBool());

        QSignalSpy stoppedOrStarted(dialog.rest(), SIGNAL(runningChanged()));
        tap(dialog.window(), middle(dialog, "install"));
        QVERIFY(!stoppedOrStarted.isEmpty());
        QCOMPARE(dialog.answers(), 0);

        QTRY_VERIFY(dialog.rest()->property("running").toBool());
        dialog.makeReady();
        QCOMPARE(dialog.answers(), 0);
        tap(dialog.window(), middle(dialog, "install"));
        QCOMPARE(dialog.requested(), 1);
    }

    void tappingNeverInstalls_data()
    {
        addPointers();
        QTest::newRow("two fingers") << Tap(tapWithTwoFingers);
    }

    void tappingNeverInstalls()
    {
        QFETCH(Tap, tap);
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
    }

    void earlyPressIsTooEarlyForItsWholeLength_data()
    {
        QTest::addColumn<bool>("byTouch");

        QTest::newRow("mouse") << false;
        QTest::newRow("touch") << true;
    }

    void earlyPressIsTooEarlyForItsWholeLength()
    {
        QFETCH(bool, byTouch);
        const ShownDialog dialog;
        dialog.rest()->setProperty("interval", Never);
        const QPoint point = middle(dialog, "install");

        if (byTouch) {
            QTest::touchEvent(dialog.window(), touchScreen()).press(0, point);
        } else {
            QTest::mousePress(dialog.window(), Qt::LeftButton, {}, point);
        }
        dialog.rest()->setProperty("interval", 0);
        awaitFrames(dialog);
        QVERIFY(!dialog.isReady());
        if (byTouch) {
            QTest::touchEvent(dialog.window(), touchScreen()).release(0, point);
        } else {
            QTest::mouseRelease(dialog.window(), Qt::LeftButton, {}, point);
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

        QAccessible::queryAccessibleInterface(dialog.item("install"))
                ->actionInterface()
                ->doAction(QAccessibleActionInterface::pressAction());

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

    void turningStartsTheTimeAnew()
    {
        const ShownDialog dialog;
        dialog.makeReady();
        dialog.rest()->setProperty("interval", Never);

        dialog.window()->resize(dialog.window()->size().transposed());

        QTRY_VERIFY(!dialog.isReady());
    }

    void warningIsBroughtIntoSightFirst_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("fontSize");
        QTest::addColumn<Qt::Key>("key");

        const struct
        {
            const char *name;
            QSize size;
            int fontSize;
        } screens[] = {
                {"phone", QSize(360, 640), 22},
                {"on its side", QSize(640, 360), 20},
                {"warning is taller than its place", QSize(320, 480), 28},
                {"warning is much taller than its place", QSize(480, 320), 28},
        };
        for (const auto &screen : screens) {
            QTest::addRow("%s, at the beginning", screen.name) << screen.size << screen.fontSize << Qt::Key_PageUp;
            QTest::addRow("%s, at the end", screen.name) << screen.size << screen.fontSize << Qt::Key_PageDown;
        }
    }

    void warningIsBroughtIntoSightFirst()
    {
        QFETCH(QSize, size);
        QFETCH(int, fontSize);
        QFETCH(Qt::Key, key);
        setFontSize(fontSize);
        const ShownDialog dialog(longTexts(), size);
        QTest::keyClick(dialog.window(), Qt::Key_Backtab, Qt::ShiftModifier);
        QTest::keyClick(dialog.window(), Qt::Key_Return);
        dialog.awaitFrame();
        for (int i = 0; i < 100; ++i) {
            QTest::keyClick(dialog.window(), key);
        }
        const QRectF view = dialog.place("body");
        const auto isInSight = [&] {
            const QRectF panel = dialog.place("panel");
            const bool fits = panel.height() <= view.height();
            return panel.bottom() <= view.bottom() + 1
                    && (fits ? panel.top() >= view.top() - 1 : panel.bottom() >= view.bottom() - 1);
        };
        const bool wasInSight = isInSight();

        int taps = 0;
        while (dialog.answers() == 0) {
            QVERIFY(++taps < 10);
            const bool before = isInSight();
            dialog.makeReady();
            tap(dialog.window(), middle(dialog, "install"));
            QCOMPARE(dialog.requested(), before ? 1 : 0);
            QVERIFY(before || !dialog.isReady());
        }
        QCOMPARE(taps == 1, wasInSight);
        QVERIFY(key == Qt::Key_PageUp || taps == 2);
    }
};

DIALOG_TEST_MAIN(DialogGuardTest)

#include "tst_dialogguard.moc"
