// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Window 2.15
import QtQuick.Templates 2.15 as T

// Asks whether a package is to be installed. Its creator publishes the package's details as the context property
// "rpmInfo", shows the window full screen and destroys it after the answer.
//
// A user waits while this file is loaded, so it is lean: few bindings, one large font beside the application's own, and
// no inline components, which would keep the engine from caching what it has compiled.
Window {
    id: dialog

    // The user's answer: exactly one of the two, exactly once.
    signal requestInstall()
    signal dismissed()

    property bool answered: false

    readonly property QtObject info: typeof rpmInfo === "undefined" ? null : rpmInfo

    // A density-independent pixel, a 160th of an inch, in quarters so that multiples of four are whole. Displays are
    // wrong about their size at times, hence the bounds.
    readonly property real dp: Math.max(4, Math.min(16, Math.round(Screen.pixelDensity * 25.4 / 40))) / 4
    readonly property real gap: 16 * dp
    readonly property real fontSize: Qt.application.font.pixelSize
    readonly property color faintInk: mix(palette.text, palette.base, 0.3)

    function answer(give) {
        if (!answered) {
            answered = true
            give()
        }
    }

    // Package text comes from strangers. What would be invisible, start a new line or turn the direction of its
    // surroundings is replaced by something harmless, and the middle of what is too long is left out.
    function harmless(text, longest) {
        // What is cut through goes as a whole.
        const shown = text.length > longest ? text.slice(0, longest / 2).replace(/[\ud800-\udbff]$/, "") + "…"
                                              + text.slice(-longest / 2).replace(/^[\udc00-\udfff]/, "") : text
        return shown.replace(/\s+/g, " ").replace(
            /[\u0000-\u001f\u007f-\u009f\u00ad\u034f\u061c\u115f\u1160\u17b4\u17b5\u180b-\u180e\u200b\u200e\u200f\u202a-\u202e\u2060-\u206f\u3164\uffa0\ufff0-\ufffb]|[\udb40-\udb43][\udc00-\udfff]|\ud80d[\udc30-\udc3f]|\ud82f[\udca0-\udca3]|\ud834[\udd73-\udd7a]/g,
            "\ufffd")
    }

    function mix(from, to, part) {
        return Qt.tint(from, Qt.rgba(to.r, to.g, to.b, part))
    }

    function scrollBy(distance) {
        body.contentY = Math.max(0, Math.min(body.contentHeight - body.height, body.contentY + distance))
    }

    // Whoever moves about by keyboard sees where they are.
    function reveal(item) {
        if (item.activeFocus) {
            const top = item.mapToItem(content, 0, 0).y - body.contentY
            scrollBy(Math.min(top, Math.max(0, top + item.height - body.height)))
        }
    }

    // A key that is still held down from before the dialog came up is no answer: it is known by its being repeated. The
    // buttons, which take the Space key themselves, leave it alone likewise.
    function handleKey(event) {
        event.accepted = true
        switch (event.key) {
        case Qt.Key_Escape:
        case Qt.Key_Back:
            if (!event.isAutoRepeat)
                answer(dismissed)
            break
        case Qt.Key_Return:
        case Qt.Key_Enter:
            if (!event.isAutoRepeat && activeFocusItem.clicked)
                activeFocusItem.clicked()
            break
        case Qt.Key_Left:
        case Qt.Key_Right:
            (cancel.activeFocus ? install : cancel).forceActiveFocus(Qt.TabFocusReason)
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
    color: palette.base
    // The size it is going to be shown at, so that nothing is laid out twice.
    width: Screen.width
    height: Screen.height
    onClosing: answer(dismissed)
    // Nobody can answer what cannot be painted. Without this the toolkit would end the whole program. Not at once, since
    // the next file's dialog comes up in answer, and the error may come while this one is still being shown.
    onSceneGraphError: Qt.callLater(answer, dismissed)

    SystemPalette { id: palette }

    FocusScope {
        id: page

        readonly property real column: width - 2 * dialog.gap
        readonly property real needed: content.height + actions.height + 1.5 * dialog.gap

        // All of a phone's screen, with the buttons in reach of the thumb; on anything wider, as little as is needed.
        x: Math.round((dialog.width - width) / 2)
        y: Math.round((dialog.height - height) / 2)
        width: Math.min(dialog.width, Math.max(560 * dialog.dp, 36 * dialog.fontSize))
        height: dialog.width > width ? Math.min(dialog.height, needed) : dialog.height
        focus: true
        // A control follows the locale, unlike the application, whose direction is that of the toolkit's catalogue.
        LayoutMirroring.enabled: cancel.mirrored
        LayoutMirroring.childrenInherit: true
        Accessible.role: Accessible.Dialog
        Accessible.name: question.text
        Accessible.description: warning.text + "\n" + name.text + " " + version.text + "\n" + summary.text
        Keys.onPressed: (event) => dialog.handleKey(event)

        Grid {
            id: actions

            readonly property real half: (page.column - spacing) / 2
            readonly property real cell: columns === 1 ? page.column : half
            readonly property real cellHeight: Math.max(48 * dialog.dp, cancel.implicitContentHeight + 1.5 * dialog.gap)

            x: dialog.gap
            y: body.height + dialog.gap / 2
            columns: Math.max(cancel.implicitContentWidth, install.implicitContentWidth) > half - dialog.gap ? 1 : 2
            spacing: dialog.gap

            T.Button {
                id: cancel
                width: actions.cell
                height: actions.cellHeight
                focus: true
                //: Button that closes the dialog without installing anything; as short as possible
                //% "Cancel"
                text: qsTrId("installationhandler-cancel")
                Accessible.role: Accessible.Button
                Accessible.name: text
                onClicked: dialog.answer(dialog.dismissed)
                Keys.onSpacePressed: (event) => event.accepted = event.isAutoRepeat
                contentItem: Text {
                    text: cancel.text
                    color: palette.text
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideRight
                }
                background: Rectangle {
                    radius: dialog.gap / 2
                    color: dialog.mix(palette.base, palette.text, cancel.pressed ? 0.2 : cancel.hovered ? 0.06 : 0)
                    border.width: (cancel.visualFocus ? 3 : 1) * dialog.dp
                    border.color: cancel.visualFocus ? palette.text : dialog.faintInk
                }
            }
            T.Button {
                id: install
                width: actions.cell
                height: actions.cellHeight
                //: Button that starts the installation; as short as possible
                //% "Install"
                text: qsTrId("installationhandler-install")
                Accessible.role: Accessible.Button
                Accessible.name: text
                onClicked: dialog.answer(dialog.requestInstall)
                Keys.onSpacePressed: (event) => event.accepted = event.isAutoRepeat
                contentItem: Text {
                    text: install.text
                    color: palette.highlightedText
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideRight
                }
                background: Rectangle {
                    radius: dialog.gap / 2
                    color: dialog.mix(palette.highlight, palette.text, install.pressed ? 0.25 : install.hovered ? 0.1 : 0)
                    border.width: install.visualFocus ? 3 * dialog.dp : 0
                    border.color: palette.text
                }
            }
        }

        Flickable {
            id: body
            width: page.width
            height: page.height - actions.height - 1.5 * dialog.gap
            contentHeight: content.height
            onContentHeightChanged: dialog.reveal(file)
            interactive: contentHeight > height
            clip: interactive

            Column {
                id: content
                y: Math.max(0, Math.round((body.height - height) / 3))
                padding: dialog.gap
                spacing: dialog.gap

                Text {
                    id: question
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    width: page.column
                    //: Heading of the dialog that asks whether a package file is to be installed
                    //% "Install this app?"
                    text: qsTrId("installationhandler-install-question")
                    font.pixelSize: 1.4 * dialog.fontSize
                    color: palette.text
                    horizontalAlignment: Text.AlignLeft
                    wrapMode: Text.Wrap
                }
                // Above the details: no text of a stranger is long enough to push it away.
                Text {
                    id: warning
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    width: page.column
                    //: Warning above the details of a package that the user got elsewhere than in the app store
                    //% "This app does not come from the store. Install it only if you trust its source."
                    text: qsTrId("installationhandler-untrusted-source")
                    color: palette.text
                    leftPadding: dialog.gap
                    rightPadding: leftPadding
                    horizontalAlignment: Text.AlignLeft
                    wrapMode: Text.Wrap

                    Rectangle {
                        anchors.left: parent.left
                        width: dialog.gap / 4
                        height: parent.height
                        color: palette.highlight
                    }
                }
                Rectangle {
                    id: card
                    width: page.column
                    height: details.height
                    // Letters with heaps of marks reach far beyond their lines.
                    clip: true
                    radius: dialog.gap / 2
                    color: dialog.mix(palette.base, palette.text, 0.06)

                    Column {
                        id: details

                        readonly property real column: page.column - 2 * padding

                        padding: dialog.gap
                        topPadding: name.visible || version.visible || summary.visible ? padding : spacing
                        bottomPadding: spacing
                        spacing: dialog.gap / 2

                        Text {
                            id: name
                            Accessible.role: Accessible.StaticText
                            Accessible.name: text
                            visible: text !== ""
                            width: details.column
                            text: dialog.info ? dialog.harmless(dialog.info.name, 128) : ""
                            textFormat: Text.PlainText
                            font.pixelSize: 1.4 * dialog.fontSize
                            color: palette.text
                            horizontalAlignment: Text.AlignLeft
                            wrapMode: Text.Wrap
                        }
                        Text {
                            id: version
                            Accessible.role: Accessible.StaticText
                            Accessible.name: text
                            visible: text !== ""
                            width: details.column
                            text: dialog.info ? dialog.harmless(dialog.info.version, 64) : ""
                            textFormat: Text.PlainText
                            color: dialog.faintInk
                            horizontalAlignment: Text.AlignLeft
                            wrapMode: Text.Wrap
                        }
                        Text {
                            id: summary
                            Accessible.role: Accessible.StaticText
                            Accessible.name: text
                            visible: text !== ""
                            width: details.column
                            text: dialog.info ? dialog.harmless(dialog.info.summary, 1000) : ""
                            textFormat: Text.PlainText
                            color: palette.text
                            horizontalAlignment: Text.AlignLeft
                            wrapMode: Text.Wrap
                        }
                        T.Button {
                            id: file

                            property bool expanded: false

                            width: details.column
                            height: Math.max(48 * dialog.dp, implicitContentHeight)
                            text: dialog.info ? dialog.harmless(dialog.info.fileName, 4096) : ""
                            Accessible.role: Accessible.Button
                            Accessible.name: text
                            //: Spoken by screen readers for the shortened path of the package file, which can be pressed
                            //% "Shows the whole path of the package file"
                            Accessible.description: qsTrId("installationhandler-show-path")
                            onClicked: expanded = !expanded
                            Keys.onSpacePressed: (event) => event.accepted = event.isAutoRepeat
                            onVisualFocusChanged: dialog.reveal(file)
                            leftInset: -dialog.gap / 2
                            rightInset: -dialog.gap / 2
                            background: Rectangle {
                                visible: file.visualFocus || file.pressed || file.hovered
                                radius: dialog.gap / 2
                                color: palette.base
                                border.width: file.visualFocus ? 3 * dialog.dp : 0
                                border.color: palette.text
                            }
                            contentItem: Text {
                                id: path
                                text: file.text
                                textFormat: Text.PlainText
                                color: dialog.mix(palette.text, palette.highlight, 0.5)
                                horizontalAlignment: Text.AlignLeft
                                verticalAlignment: Text.AlignVCenter
                                elide: file.expanded ? Text.ElideNone : Text.ElideMiddle
                                wrapMode: file.expanded ? Text.WrapAnywhere : Text.NoWrap
                            }
                        }
                    }
                }
            }
        }

        // Which part of the text is to be seen, when there is more than fits.
        Rectangle {
            visible: body.interactive
            anchors.right: parent.right
            y: body.height * body.contentY / body.contentHeight
            width: dialog.gap / 4
            height: body.height * body.height / body.contentHeight
            color: dialog.faintInk
        }
    }
}
