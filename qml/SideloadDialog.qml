// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Window 2.15
import QtQuick.Templates 2.15 as T

// Asks whether a package is to be installed. Its creator shows the window full screen and destroys it after the answer.
//
// An upgrade may replace this file while the program of the version before runs, so their interface keeps its names:
//   requestInstall(), dismissed()  the signals of the root object, a Window
//   rpmInfo                        the package's details, a context property of the program: an object with the strings
//                                  name, version, summary and fileName
//
// A user waits while this file is loaded, so it is lean: few bindings, one large font beside the application's own, and
// no inline components, because the engine does not cache a compiled file that has them.
Window {
    id: dialog

    // The user's answer: exactly one of these signals, exactly once.
    signal requestInstall()
    signal dismissed()

    property bool answered: false

    readonly property QtObject info: typeof rpmInfo === "undefined" ? null : rpmInfo

    // A density-independent pixel is a 160th of an inch, in pixels, rounded to a quarter, so that 4 dp are whole pixels.
    // The bounds are for displays that report a wrong size.
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

    // Characters that show nothing, or that change the direction of the text around them, in UTF-16.
    readonly property var deceptive: new RegExp("[" + [
        "\\u0000-\\u001f\\u007f-\\u009f", // control characters
        "\\u00ad", // soft hyphen
        "\\u034f", // combining grapheme joiner
        "\\u061c\\u200e\\u200f\\u202a-\\u202e", // direction marks, embeddings and overrides
        "\\u115f\\u1160\\u3164\\uffa0", // Hangul fillers
        "\\u17b4\\u17b5", // Khmer inherent vowels
        "\\u180b-\\u180e", // Mongolian variation selectors and vowel separator
        "\\u200b", // zero width space
        "\\u2060-\\u206f", // word joiner, invisible operators, direction isolates, deprecated format characters
        "\\ufff0-\\ufffb", // interlinear annotations and unassigned specials
    ].join("") + "]|" + [
        "[\\udb40-\\udb43][\\udc00-\\udfff]", // U+E0000 to U+E0FFF: tags, variation selectors
        "\\ud80d[\\udc30-\\udc3f]", // U+13430 to U+1343F: format controls of Egyptian hieroglyphs
        "\\ud82f[\\udca0-\\udca3]", // U+1BCA0 to U+1BCA3: format controls of shorthand
        "\\ud834[\\udd73-\\udd7a]", // U+1D173 to U+1D17A: format controls of musical notation
    ].join("|"), "g")

    // Makes text of a package, which may come from anybody, safe to show: one line without deceptive characters. A text
    // that is too long loses its middle.
    function harmless(text, longest) {
        // A surrogate pair that the cut would halve is left out.
        const shown = text.length > longest ? text.slice(0, longest / 2).replace(/[\ud800-\udbff]$/, "") + "…"
                                              + text.slice(-longest / 2).replace(/^[\udc00-\udfff]/, "") : text
        return shown.replace(/\s+/g, " ").replace(deceptive, "\ufffd")
    }

    function mix(from, to, part) {
        return Qt.tint(from, Qt.rgba(to.r, to.g, to.b, part))
    }

    function scrollBy(distance) {
        body.contentY = Math.max(0, Math.min(body.contentHeight - body.height, body.contentY + distance))
    }

    // Scrolls to an item that has the keyboard focus.
    function reveal(item) {
        if (item.activeFocus) {
            const top = item.mapToItem(content, 0, 0).y - body.contentY
            scrollBy(Math.min(top, Math.max(0, top + item.height - body.height)))
        }
    }

    // A key that was pressed before the dialog came up and is still held down repeats. A repeated key is no answer; the
    // buttons, which handle the Space key themselves, ignore its repetition too.
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
    // The window has the size of the screen from the beginning, so that the layout is computed only once.
    width: Screen.width
    height: Screen.height
    onClosing: answer(dismissed)
    // A dialog that cannot be painted counts as dismissed; without a handler Qt would end the whole program. The answer
    // is deferred: it may open the next file's dialog, and the error may come inside of showFullScreen().
    onSceneGraphError: Qt.callLater(answer, dismissed)

    SystemPalette { id: palette }

    FocusScope {
        id: page

        readonly property real column: width - 2 * dialog.gap
        readonly property real needed: content.height + actions.height + 1.5 * dialog.gap

        // The page fills a phone's screen, so that the thumb reaches the buttons. On a wider screen it is only as high
        // as its content.
        x: Math.round((dialog.width - width) / 2)
        y: Math.round((dialog.height - height) / 2)
        width: Math.min(dialog.width, Math.max(560 * dialog.dp, 36 * dialog.fontSize))
        height: dialog.width > width ? Math.min(dialog.height, needed) : dialog.height
        focus: true
        // A control is mirrored by the locale, the application only if Qt's own catalogue of the language is installed.
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
                // The warning stands above the package's texts, so that a long text cannot push it off the screen.
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
                    // A letter with many combining marks reaches far beyond its line.
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

        // Shows which part of the text is visible, when it does not all fit.
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
