// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Window 2.15
import QtQuick.Templates 2.15 as T

// Asks whether a package is to be installed. Its creator publishes the package's details as the context property
// "rpmInfo", shows the window full screen and destroys it after the answer.
//
// It is on the way between a tap and the first frame, so it is lean: no inline components (documents that have them
// are compiled anew in every process), explicit sizes rather than layouts (each text is laid out once), one extra font.
Window {
    id: dialog

    // The user's answer: exactly one of the two, exactly once.
    signal requestInstall()
    signal dismissed()

    property bool answered: false

    readonly property QtObject info: typeof rpmInfo === "undefined" ? null : rpmInfo

    // A density-independent pixel, 1/160 inch; within bounds because displays are wrong about their size at times.
    readonly property real dp: Math.max(1, Math.min(4, Screen.pixelDensity * 25.4 / 160))
    readonly property real gap: 20 * dp
    readonly property bool tablet: width >= 600 * dp && height >= 600 * dp
    readonly property bool twoColumns: !tablet && width > height
    readonly property real panelWidth: tablet ? 560 * dp : width
    readonly property real columnWidth: twoColumns ? (panelWidth - 3 * gap) / 2 : panelWidth - 2 * gap
    readonly property int largeFont: Qt.application.font.pixelSize * 1.6

    readonly property color paper: tablet ? palette.base : palette.window
    readonly property color ink: tablet ? palette.text : palette.windowText
    readonly property color faintInk: mix(ink, paper, 0.3)

    function answer(give) {
        if (!answered) {
            answered = true
            give()
        }
    }

    function mix(from, to, part) {
        return Qt.tint(from, Qt.rgba(to.r, to.g, to.b, part))
    }

    // Package text comes from strangers. What would be invisible, start a new line or turn the direction of its
    // surroundings is replaced by something harmless, and the middle of what is too long is left out.
    function harmless(text, longest) {
        const shown = text.length > longest ? text.slice(0, longest / 2) + "…" + text.slice(-longest / 2) : text
        return shown.replace(/\s+/g, " ").replace(
            /[\u0000-\u001f\u007f-\u009f\u00ad\u034f\u061c\u115f\u1160\u17b4\u17b5\u180b-\u180e\u200b\u200e\u200f\u202a-\u202e\u2060-\u206f\u3164\uffa0\ufff0-\ufffb]|\udb40[\udc00-\udfff]/g,
            "\ufffd")
    }

    function scrollBy(distance) {
        body.contentY = Math.max(0, Math.min(body.contentHeight - body.height, body.contentY + distance))
    }

    function handleKey(event) {
        event.accepted = true
        switch (event.key) {
        case Qt.Key_Escape:
        case Qt.Key_Back:
            answer(dismissed)
            break
        case Qt.Key_Return:
        case Qt.Key_Enter:
            // A key that is still held down from before the dialog came up is no answer.
            if (!event.isAutoRepeat)
                activeFocusItem.click()
            break
        case Qt.Key_Up:
            scrollBy(-2 * gap)
            break
        case Qt.Key_Down:
            scrollBy(2 * gap)
            break
        case Qt.Key_PageUp:
            scrollBy(-body.height)
            break
        case Qt.Key_PageDown:
            scrollBy(body.height)
            break
        default:
            event.accepted = false
        }
    }

    title: question.text
    color: palette.window
    // The size it is going to be shown at, so that nothing is laid out twice.
    width: Screen.width
    height: Screen.height
    onClosing: answer(dismissed)

    SystemPalette { id: palette }

    FocusScope {
        id: page
        x: (dialog.width - width) / 2
        y: (dialog.height - height) / 2
        width: dialog.panelWidth
        height: dialog.tablet ? Math.min(dialog.height, body.contentHeight + actions.height + 2 * dialog.gap) : dialog.height
        focus: true
        // Follows the locale by itself, unlike the application, whose direction is that of the toolkit's catalogue.
        LayoutMirroring.enabled: cancel.mirrored
        LayoutMirroring.childrenInherit: true
        Accessible.role: Accessible.Dialog
        Accessible.name: question.text
        Accessible.description: name.text + " " + version.text + "\n" + summary.text
        Keys.onPressed: dialog.handleKey(event)

        Rectangle {
            visible: dialog.tablet
            width: page.width
            height: page.height
            radius: 16 * dialog.dp
            color: dialog.paper
        }

        Item {
            id: actions

            readonly property real half: (width - 12 * dialog.dp) / 2
            readonly property bool stacked: Math.max(cancelLabel.width, installLabel.width) + 16 * dialog.dp > half

            x: dialog.gap
            y: page.height - height - dialog.gap
            width: page.width - 2 * dialog.gap
            height: stacked ? install.y + install.height : install.height

            T.Button {
                id: cancel
                objectName: "cancel"
                anchors.left: parent.left
                width: actions.stacked ? parent.width : actions.half
                height: Math.max(48 * dialog.dp, cancelLabel.height + 16 * dialog.dp)
                focus: true
                Accessible.role: Accessible.Button
                Accessible.name: cancelLabel.text
                KeyNavigation.right: install
                KeyNavigation.down: actions.stacked ? install : null
                KeyNavigation.up: file
                onClicked: dialog.answer(dialog.dismissed)

                Rectangle {
                    width: parent.width
                    height: parent.height
                    radius: 8 * dialog.dp
                    color: dialog.mix(dialog.paper, dialog.ink, cancel.pressed ? 0.2 : cancel.hovered ? 0.06 : 0)
                    border.width: (cancel.visualFocus ? 3 : 1) * dialog.dp
                    border.color: cancel.visualFocus ? palette.highlight : dialog.faintInk
                }
                Text {
                    id: cancelLabel
                    anchors.centerIn: parent
                    //: Button that closes the dialog without installing anything; as short as possible
                    //% "Cancel"
                    text: qsTrId("installationhandler-bt-cancel")
                    color: dialog.ink
                }
            }
            T.Button {
                id: install
                objectName: "install"
                anchors.right: parent.right
                y: actions.stacked ? cancel.height + 12 * dialog.dp : 0
                width: cancel.width
                height: cancel.height
                Accessible.role: Accessible.Button
                Accessible.name: installLabel.text
                KeyNavigation.left: cancel
                KeyNavigation.up: actions.stacked ? cancel : file
                onClicked: dialog.answer(dialog.requestInstall)

                Rectangle {
                    width: parent.width
                    height: parent.height
                    radius: 8 * dialog.dp
                    color: dialog.mix(palette.highlight, dialog.ink, install.pressed ? 0.25 : install.hovered ? 0.1 : 0)
                    border.width: install.visualFocus ? 3 * dialog.dp : 0
                    border.color: dialog.ink
                }
                Text {
                    id: installLabel
                    anchors.centerIn: parent
                    //: Button that starts the installation; as short as possible
                    //% "Install"
                    text: qsTrId("installationhandler-bt-install")
                    color: palette.highlightedText
                }
            }
        }

        Flickable {
            id: body
            width: page.width
            height: actions.y
            contentHeight: Math.max(identity.y + identity.height, details.y + details.height) + dialog.gap
            interactive: contentHeight > height
            clip: interactive

            Item {
                id: identity
                anchors { left: parent.left; leftMargin: dialog.gap }
                y: dialog.gap
                width: dialog.columnWidth
                height: Math.max(tile.y + tile.height, version.y + version.height)

                Text {
                    id: question
                    width: parent.width
                    //: Heading of the dialog that asks whether a package file is to be installed
                    //% "Install this app?"
                    text: qsTrId("installationhandler-he-install_app")
                    font.pixelSize: dialog.largeFont
                    color: dialog.ink
                    horizontalAlignment: Text.AlignLeft
                    wrapMode: Text.Wrap
                }
                Rectangle {
                    id: tile
                    anchors.left: parent.left
                    y: question.height + dialog.gap
                    width: 56 * dialog.dp
                    height: width
                    radius: 12 * dialog.dp
                    color: dialog.mix(dialog.paper, palette.highlight, 0.2)

                    Text {
                        anchors.centerIn: parent
                        text: name.text.slice(0, 1).toUpperCase()
                        textFormat: Text.PlainText
                        font.pixelSize: dialog.largeFont
                        color: dialog.ink
                    }
                }
                Text {
                    id: name
                    objectName: "name"
                    anchors.right: parent.right
                    y: tile.y
                    width: version.width
                    text: dialog.info ? dialog.harmless(dialog.info.name, 200) : ""
                    textFormat: Text.PlainText
                    color: dialog.ink
                    horizontalAlignment: Text.AlignLeft
                    wrapMode: Text.Wrap
                    maximumLineCount: 4
                    elide: Text.ElideRight
                }
                Text {
                    id: version
                    objectName: "version"
                    anchors.right: parent.right
                    y: name.y + name.height + 4 * dialog.dp
                    width: parent.width - tile.width - 16 * dialog.dp
                    text: dialog.info ? dialog.harmless(dialog.info.version, 100) : ""
                    textFormat: Text.PlainText
                    color: dialog.faintInk
                    horizontalAlignment: Text.AlignLeft
                    wrapMode: Text.Wrap
                    maximumLineCount: 2
                    elide: Text.ElideRight
                }
            }
            Item {
                id: details
                anchors { right: parent.right; rightMargin: dialog.gap }
                y: dialog.twoColumns ? dialog.gap : identity.y + identity.height + dialog.gap
                width: dialog.columnWidth
                height: warning.y + warning.height + dialog.gap

                Text {
                    id: summary
                    objectName: "summary"
                    width: parent.width
                    text: dialog.info ? dialog.harmless(dialog.info.summary, 1000) : ""
                    textFormat: Text.PlainText
                    color: dialog.ink
                    horizontalAlignment: Text.AlignLeft
                    wrapMode: Text.Wrap
                }
                T.AbstractButton {
                    id: file

                    property bool expanded: false

                    objectName: "file"
                    y: summary.height
                    width: parent.width
                    height: Math.max(48 * dialog.dp, path.height + 16 * dialog.dp)
                    Accessible.role: Accessible.Button
                    Accessible.name: path.text
                    //: Spoken by screen readers for the shortened path of the package file, which can be pressed
                    //% "Shows the whole path of the package file"
                    Accessible.description: qsTrId("installationhandler-la-show_path")
                    KeyNavigation.down: cancel
                    onClicked: expanded = !expanded

                    Text {
                        id: path
                        objectName: "path"
                        y: (file.height - height) / 2
                        width: parent.width
                        text: dialog.info ? dialog.harmless(dialog.info.fileName, 4096) : ""
                        textFormat: Text.PlainText
                        color: dialog.faintInk
                        horizontalAlignment: Text.AlignLeft
                        elide: file.expanded ? Text.ElideNone : Text.ElideMiddle
                        wrapMode: file.expanded ? Text.WrapAnywhere : Text.NoWrap
                    }
                }
                Rectangle {
                    id: callout
                    y: file.y + file.height
                    width: parent.width
                    height: warning.height + 24 * dialog.dp
                    radius: 8 * dialog.dp
                    color: dialog.mix(dialog.paper, dialog.ink, 0.07)
                }
                Text {
                    id: warning
                    x: 12 * dialog.dp
                    y: callout.y + 12 * dialog.dp
                    width: parent.width - 2 * x
                    //: Warning below the details of a package that the user got elsewhere than in the app store
                    //% "This app does not come from the store. Install it only if you trust its source."
                    text: qsTrId("installationhandler-la-untrusted_source")
                    color: dialog.ink
                    horizontalAlignment: Text.AlignLeft
                    wrapMode: Text.Wrap
                }
            }
        }
    }
}
