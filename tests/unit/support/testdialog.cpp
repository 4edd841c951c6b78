// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "testdialog.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QMetaObject>

namespace {

const QByteArray PlainDialog = R"(
import QtQuick 2.15
import QtQuick.Window 2.15

Window {
    signal requestInstall()
    signal dismissed()

    property string shown: typeof rpmInfo === "undefined"
            ? "nothing" : [rpmInfo.name, rpmInfo.version, rpmInfo.summary, rpmInfo.fileName].join("|")

    objectName: "dialog"
}
)";

void emitSignal(QQuickWindow *window, const char *name)
{
    if (!window || !QMetaObject::invokeMethod(window, name, Qt::DirectConnection)) {
        qFatal("There is no dialog that could emit %s", name);
    }
}

}

TestDialog::TestDialog()
    : m_file(QStringLiteral("/usr/share/velmora-installationhandler/SideloadDialog.qml"), PlainDialog)
{
}

void TestDialog::write(const QByteArray &qml)
{
    m_file.write(qml);
}

void TestDialog::remove()
{
    m_file.remove();
}

QList<QQuickWindow *> TestDialog::windows()
{
    QList<QQuickWindow *> dialogs;
    const QWindowList all = QGuiApplication::allWindows();
    for (QWindow *window : all) {
        if (window->objectName() == QLatin1String("dialog")) {
            dialogs.append(qobject_cast<QQuickWindow *>(window));
        }
    }
    return dialogs;
}

QQuickWindow *TestDialog::window()
{
    const QList<QQuickWindow *> dialogs = windows();
    return dialogs.size() == 1 ? dialogs.first() : nullptr;
}

void TestDialog::confirm(QQuickWindow *window)
{
    emitSignal(window, "requestInstall");
}

void TestDialog::dismiss(QQuickWindow *window)
{
    emitSignal(window, "dismissed");
}

void TestDialog::deleteScheduled()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void TestDialog::deleteAll()
{
    qDeleteAll(windows());
}
