// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QMetaType>
#include <QPoint>
#include <QVector>
#include <QWindow>

#include <functional>

using Tap = std::function<void(QWindow *window, const QPoint &point)>;
Q_DECLARE_METATYPE(Tap)

/** A way to tap on a window. */
struct Pointer
{
    const char *name;
    Tap tap;
};

/** Mouse, touch screen and pen. */
const QVector<Pointer> &pointers();

/** The test's only touch screen. */
QTouchDevice *touchScreen();

/** Taps with one finger. */
void tap(QWindow *window, const QPoint &point);

/** Taps with a finger, while another one beside it comes later and stays longer. */
void tapWithTwoFingers(QWindow *window, const QPoint &point);
