// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "packagetexts.h"

#include <QImage>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>

#include <memory>

/** The installed dialog on screen, in an engine of its own, and the answers that it gives. */
class ShownDialog
{
public:
    /**
     * texts: of the package, borrowed. size: of the window, in pixels.
     * The program fails unless the dialog can be created and shown.
     */
    explicit ShownDialog(PackageTexts *texts, const QSize &size = QSize(540, 960));

    /** In an engine that knows of no package. */
    ShownDialog();

    QQuickWindow *window() const { return m_window.get(); }

    /** Whether it was on screen before anybody had shown it. */
    bool wasVisibleEarly() const { return m_wasVisibleEarly; }

    /** The item of this id; fails the program if there is none. */
    QQuickItem *item(const char *id) const;

    /** Every item that shows text and is to be seen. */
    QList<QQuickItem *> texts() const;

    /** Where an item is, in the window. */
    static QRectF place(const QQuickItem *item);

    /** Waits until the window has laid out and painted what has changed. */
    void awaitFrame() const;

    /** What is on screen. */
    QImage picture() const;

    /** How often the user's answer was given: yes and no. */
    int requested() const { return m_requested->count(); }
    int dismissed() const { return m_dismissed->count(); }

private:
    void show(const QSize &size);

    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    bool m_wasVisibleEarly = true;
    std::unique_ptr<QSignalSpy> m_requested;
    std::unique_ptr<QSignalSpy> m_dismissed;
};
