// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "pointers.h"

#include <QTest>

namespace {

void click(QWindow *window, const QPoint &point)
{
    QTest::mouseClick(window, Qt::LeftButton, {}, point);
}

void tapWithAnotherFingerDown(QWindow *window, const QPoint &point)
{
    const QPoint elsewhere(5, 5);
    QTest::touchEvent(window, touchScreen()).press(0, elsewhere);
    QTest::touchEvent(window, touchScreen()).stationary(0).press(1, point);
    QTest::touchEvent(window, touchScreen()).stationary(0).release(1, point);
    QTest::touchEvent(window, touchScreen()).release(0, elsewhere);
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

}

const QVector<Pointer> &pointers()
{
    static const QVector<Pointer> all{
            {"mouse", click},      {"mouse, twice", doubleClick},
            {"touch", tap},        {"second finger", tapWithAnotherFingerDown},
            {"pen", touchWithPen},
    };
    return all;
}

QTouchDevice *touchScreen()
{
    static QTouchDevice *screen = QTest::createTouchDevice();
    return screen;
}

void tap(QWindow *window, const QPoint &point)
{
    QTest::touchEvent(window, touchScreen()).press(0, point);
    QTest::touchEvent(window, touchScreen()).release(0, point);
}

void tapWithTwoFingers(QWindow *window, const QPoint &point)
{
    const QPoint beside = point + QPoint(20, 5);
    QTest::touchEvent(window, touchScreen()).press(0, point);
    QTest::touchEvent(window, touchScreen()).stationary(0).press(1, beside);
    QTest::touchEvent(window, touchScreen()).release(0, point).stationary(1);
    QTest::touchEvent(window, touchScreen()).release(1, beside);
}
