// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Window 2.15
import Example 1.0

Window {
    visible: true
    width: Screen.width
    height: Screen.height

    Packages {
        id: packages
        onFinished: console.log(success ? "Done." : errorString)
    }

    component Action: Text {
        signal chosen

        width: parent.width
        height: parent.height / 2
        opacity: packages.busy ? 0.5 : 1
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter

        TapHandler {
            enabled: !packages.busy
            onTapped: parent.chosen()
        }
    }

    Column {
        anchors.fill: parent

        Action {
            text: "Install"
            onChosen: packages.install([Qt.application.arguments[1]])
        }
        Action {
            text: "Remove"
            onChosen: packages.remove([Qt.application.arguments[2]])
        }
    }
}
