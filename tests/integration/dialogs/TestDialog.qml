// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Window 2.15
import "dialognumber.js" as DialogNumber

// What all variants have in common: a number, and a line in the log when it is shown or hidden, gets another file, or is
// deleted.
Window {
    readonly property int number: DialogNumber.next()

    // A dialog that is forgotten outlives its package.
    readonly property string fileName: rpmInfo ? rpmInfo.fileName : ""

    signal requestInstall()
    signal dismissed()
    signal shown()

    onFileNameChanged: {
        if (visible && rpmInfo)
            console.log("dialog", number, "turns to", fileName)
    }
    onVisibleChanged: {
        if (visible) {
            console.log("dialog", number, "shows", JSON.stringify(
                { name: rpmInfo.name, version: rpmInfo.version, summary: rpmInfo.summary, fileName: rpmInfo.fileName }))
            Qt.callLater(shown)
        } else {
            console.log("dialog", number, "hides")
        }
    }
    Component.onDestruction: console.log("dialog", number, "goes")
}
