// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "devicefile.h"

#include <QQuickWindow>

/** Stands in for the installed dialog: the file that the service loads. */
class TestDialog
{
public:
    /** A window that shows rpmInfo in its property "shown" and answers only when answer() tells it to. */
    TestDialog();

    /** Other QML in its place. An engine that has loaded the file before may not notice. */
    void write(const QByteArray &qml);

    void remove();

    /** The dialogs that exist, in the order in which they were made. */
    static QList<QQuickWindow *> windows();

    /** The only dialog that exists; null when there is none or more than one. */
    static QQuickWindow *window();

    /** Lets the dialog emit its signal "requestInstall" or "dismissed", as a user would make it do. */
    static void confirm(QQuickWindow *window);
    static void dismiss(QQuickWindow *window);

    /** Carries out all deletions that have been scheduled. */
    static void deleteScheduled();

    /** Deletes the dialogs that the service leaves alive on purpose. */
    static void deleteAll();

private:
    DeviceFile m_file;
};
