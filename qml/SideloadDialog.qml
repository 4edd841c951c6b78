// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Window 2.15
import QtQuick.Templates 2.15 as T

Window {
    id: dialog

    signal requestInstall()
    signal dismissed()

    property bool answered: false

    function answer(give) {
        if (!answered) {
            answered = true
            give()
        }
    }

    title: question.text
    color: palette.window
    onClosing: answer(dismissed)

    SystemPalette { id: palette }

    FocusScope {
        anchors.fill: parent
        focus: true
        Keys.onEscapePressed: dialog.answer(dialog.dismissed)
        Keys.onBackPressed: dialog.answer(dialog.dismissed)

        T.Button {
            id: cancel
            objectName: "cancelButton"
            anchors { left: parent.left; bottom: parent.bottom; margins: 16 }
            width: (parent.width - 48) / 2
            height: 56
            focus: true
            //% "Cancel"
            text: qsTrId("installationhandler-bt-cancel")
            contentItem: Text {
                text: cancel.text
                color: palette.buttonText
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
            }
            background: Rectangle { color: palette.button }
            Keys.onReturnPressed: clicked()
            Keys.onEnterPressed: clicked()
            onClicked: dialog.answer(dialog.dismissed)
        }

        T.Button {
            id: install
            objectName: "installButton"
            anchors { right: parent.right; bottom: parent.bottom; margins: 16 }
            width: (parent.width - 48) / 2
            height: 56
            //% "Install"
            text: qsTrId("installationhandler-bt-install")
            contentItem: Text {
                text: install.text
                color: palette.highlightedText
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
            }
            background: Rectangle { color: palette.highlight }
            Keys.onReturnPressed: clicked()
            Keys.onEnterPressed: clicked()
            onClicked: dialog.answer(dialog.requestInstall)
        }

        Column {
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 16 }
            Text {
                id: question
                //% "Install this app?"
                text: qsTrId("installationhandler-he-install_app")
                color: palette.windowText
            }
            Text {
                width: parent.width
                text: typeof rpmInfo === "undefined" ? "" : rpmInfo.name + " " + rpmInfo.version + "\n" + rpmInfo.summary
                textFormat: Text.PlainText
                color: palette.windowText
                wrapMode: Text.Wrap
                maximumLineCount: 8
                elide: Text.ElideRight
            }
        }
    }
}
