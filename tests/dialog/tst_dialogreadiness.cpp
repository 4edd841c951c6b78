// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "pointers.h"
#include "showndialog.h"

#include <QAccessible>
#include <QElapsedTimer>
#include <QWindow>

namespace {

// The time before "Install" takes a pointer, in milliseconds.
constexpr int Rest = 700;

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

void press(const ShownDialog &dialog, const char *id)
{
    QAccessible::queryAccessibleInterface(dialog.item(id))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
}

}

/** A tap that was not meant for the dialog installs nothing (Known behaviour 70). */
class DialogReadinessTest : public DialogTest
{
    Q_OBJECT

private:
    static void addPointers()
    {
        QTest::addColumn<Tap>("tap");
        for (const Pointer &pointer : pointers()) {
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

        tap(dialog.window(), dialog.middle("install"));
        QCOMPARE(dialog.requested(), 1);
        QCOMPARE(dialog.dismissed(), 0);
    }

    void prematureTapStartsTheTimeAnew_data()
    {
        QTest::addColumn<Tap>("tap");
        QTest::addColumn<QByteArray>("place");

        for (const Pointer &pointer : pointers()) {
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
        dialog.keepUnready();
        dialog.awaitFrame();
        QTRY_VERIFY(dialog.rest()->property("running").toBool());

        QSignalSpy stoppedOrStarted(dialog.rest(), SIGNAL(runningChanged()));
        tap(dialog.window(), spot(dialog, place.constData()));
        QVERIFY(!stoppedOrStarted.isEmpty());
        QCOMPARE(dialog.answers(), 0);

        QTRY_VERIFY(dialog.rest()->property("running").toBool());
        dialog.makeReady();
        QCOMPARE(dialog.answers(), 0);
        tap(dialog.window(), dialog.middle("install"));
        QCOMPARE(dialog.requested(), 1);
    }

    void laterTapElsewhereChangesNothing_data()
    {
        QTest::addColumn<Tap>("tap");
        QTest::addColumn<QByteArray>("place");

        for (const Pointer &pointer : pointers()) {
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
        // A machine that pauses between two taps gives the dialog its time. Then the next dialog is tapped.
        bool hasPaused = true;
        while (hasPaused) {
            QElapsedTimer sinceTap;
            sinceTap.start();
            const ShownDialog dialog;
            QElapsedTimer sinceShown;
            sinceShown.start();
            hasPaused = false;
            while (!hasPaused && sinceShown.elapsed() < 2 * Rest) {
                QTest::qWait(20);
                QElapsedTimer sinceThisTap;
                sinceThisTap.start();
                tap(dialog.window(), dialog.middle("install"));
                hasPaused = sinceTap.elapsed() >= Rest;
                QVERIFY(hasPaused || dialog.answers() == 0);
                sinceTap = sinceThisTap;
            }
        }
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
        dialog.keepUnready();
        const QPoint point = spot(dialog, place.constData());
        // The finger slips off "Cancel", so that it does not answer.
        const QPoint end = place == "cancel" ? QPoint(5, 5) : point;

        if (byTouch) {
            QTest::touchEvent(dialog.window(), touchScreen()).press(0, point);
        } else {
            QTest::mousePress(dialog.window(), Qt::LeftButton, {}, point);
        }
        dialog.rest()->setProperty("interval", 0);
        dialog.awaitFrames();
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
        dialog.keepUnready();

        tap(dialog.window(), dialog.middle("cancel"));

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

        tap(dialog.window(), dialog.middle("cancel"));

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
        dialog.keepUnready();

        QTest::keyClick(dialog.window(), Qt::Key_Tab);
        QTest::keyClick(dialog.window(), key);

        QCOMPARE(dialog.requested(), 1);
    }

    void screenReaderInstallsAtOnce()
    {
        const ShownDialog dialog;
        dialog.keepUnready();

        press(dialog, "install");

        QCOMPARE(dialog.requested(), 1);
    }

    void nothingMovesWhenInstallGetsReady()
    {
        const ShownDialog dialog;
        dialog.keepUnready();
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
        QCOMPARE(early.pixel(install.left() + 5, install.center().y()), early.pixel(install.topLeft() - QPoint(3, 3)));

        dialog.makeReady();

        QCOMPARE(places(), before);
        const QImage late = dialog.picture();
        QVERIFY(early.copy(install) != late.copy(install));
        QCOMPARE(early.pixel(install.topLeft() - QPoint(3, 3)), late.pixel(install.topLeft() - QPoint(3, 3)));

        dialog.keepUnready();
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
        dialog.awaitFrames();
        QVERIFY(!dialog.isReady());
        tap(dialog.window(), dialog.middle("install"));
        QCOMPARE(dialog.answers(), 0);

        dialog.window()->requestActivate();
        dialog.awaitReady();
        tap(dialog.window(), dialog.middle("install"));
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
        dialog.keepUnready();

        dialog.window()->resize(size);

        QTRY_VERIFY(!dialog.isReady());
    }
};

DIALOG_TEST_MAIN(DialogReadinessTest)

#include "tst_dialogreadiness.moc"
