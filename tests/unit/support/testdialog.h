// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "devicefile.h"
#include "texts.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QQuickWindow>

/** Takes the place of the installed dialog, whose file the service loads. */
class TestDialog
{
public:
    /** A window that shows rpmInfo in its property "shown" and answers only by confirm() and dismiss(). */
    TestDialog()
        : m_file("/usr/share/velmora-installationhandler/SideloadDialog.qml"_s, R"(
import QtQuick 2.15
import QtQuick.Window 2.15

Window {
    signal requestInstall()
    signal dismissed()

    property string shown: typeof rpmInfo === "undefined"
            ? "nothing" : [rpmInfo.name, rpmInfo.version, rpmInfo.summary, rpmInfo.fileName].join("|")

    objectName: "dialog"
}
)")
    {
    }

    /** Replaces the QML. An engine that has loaded the file before may not notice. */
    void write(const QByteArray &qml) { m_file.write(qml); }

    void remove() { m_file.remove(); }

    /** The dialogs that exist, in the order in which they were made. */
    static QList<QQuickWindow *> windows()
    {
        QList<QQuickWindow *> dialogs;
        for (QWindow *window : QGuiApplication::allWindows()) {
            if (window->objectName() == "dialog"_s) {
                dialogs.append(qobject_cast<QQuickWindow *>(window));
            }
        }
        return dialogs;
    }

    /** The only dialog that exists; null when there is none or more than one. */
    static QQuickWindow *window()
    {
        const QList<QQuickWindow *> dialogs = windows();
        return dialogs.size() == 1 ? dialogs.first() : nullptr;
    }

    /** Let the dialog emit its signal "requestInstall" or "dismissed", as after a tap of the user. */
    static void confirm(QQuickWindow *window) { emitSignal(window, "requestInstall"); }
    static void dismiss(QQuickWindow *window) { emitSignal(window, "dismissed"); }

    /** Carries out all deletions that have been scheduled. */
    static void deleteScheduled() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    /** Deletes the dialogs that the service leaves alive on purpose. */
    static void deleteAll() { qDeleteAll(windows()); }

private:
    static void emitSignal(QQuickWindow *window, const char *name)
    {
        if (!window || !QMetaObject::invokeMethod(window, name, Qt::DirectConnection)) {
            qFatal("There is no dialog that could emit %s", name);
        }
    }

    DeviceFile m_file;
};
