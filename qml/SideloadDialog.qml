// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Window 2.15

// Asks whether a package is to be installed. Its creator shows the window full screen and destroys it after the answer.
//
// An upgrade may replace this file while the program of the version before runs, so their interface keeps its names:
//   requestInstall(), dismissed()  the signals of the root object, a Window
//   rpmInfo                        the package's details, a context property of the program: an object with the strings
//                                  name, version, summary and fileName
//
// A user waits while this file is loaded, so it is lean: few items and bindings, no library of controls, and no inline
// components, because the engine does not cache a compiled file that has them.
Window {
    id: dialog

    // The user's answer: exactly one of these signals, exactly once.
    signal requestInstall()
    signal dismissed()

    property bool answered: false

    // Whether "Install" takes a pointer: only after the dialog has been in sight and untouched for a while, because a tap
    // that comes earlier was meant for the application below it or for the dialog before it. Keys and screen readers have
    // to move the focus first, so they need no such time.
    property bool ready: false

    // The time is over, but nothing has been painted since. Perhaps nobody sees the dialog any more.
    property bool rested: false

    // The focus is shown once it has been moved.
    property bool focusShown: false

    readonly property QtObject info: typeof rpmInfo === "undefined" ? null : rpmInfo
    // A version of a package has no blanks. A text with blanks could speak in the system's place.
    readonly property string packageVersion: info ? harmless(info.version, 64).replace(/ /g, "\ufffd") : ""
    readonly property string packageFile: info ? harmless(info.fileName, 4096) : ""

    // The file's own name begins after the last slash that something follows.
    readonly property int folderLength: packageFile.lastIndexOf("/", packageFile.length - 2) + 1

    readonly property int shorterSide: Math.min(Screen.width, Screen.height)

    // A density-independent pixel is a 160th of an inch, in pixels, rounded to a quarter, so that 4 dp are whole pixels.
    // The bounds are for displays that report a wrong size. A screen is at least 320 dp wide and high.
    readonly property real dp: Math.max(4, Math.min(16, Math.round(Screen.pixelDensity * 25.4 / 40),
                                                    Math.floor(shorterSide / 80))) / 4
    readonly property real gap: 16 * dp
    readonly property int hairline: Math.round(dp)

    // A line keeps room for eleven wide letters, so that all buttons and words fit.
    readonly property int fontSize: Math.max(12 * dp, Math.min(Qt.application.font.pixelSize, shorterSide / 11))
    readonly property int smallSize: Math.max(12 * dp, 0.8 * fontSize)

    // The texts of the package are clipped: a letter with many combining marks reaches far beyond its line. This much room
    // is for letters that reach a little beyond it.
    readonly property int room: 2 * Math.ceil(fontSize / 7)

    readonly property color faintInk: mix(palette.text, palette.base, 0.25)
    readonly property color outline: mix(palette.text, palette.base, 0.4)
    readonly property color warningInk: palette.base.hslLightness < palette.text.hslLightness ? "#ffb74d" : "#a04a00"

    function answer(give) {
        if (!answered) {
            answered = true
            give()
        }
    }

    function startAnew() {
        ready = rested = false
        rest.stop()
        update()
    }

    // The distance to scroll until the warning is in sight, or the next part of one that is taller than its place. The
    // person has read all of such a warning when its end is in sight.
    function distanceToWarning() {
        const top = panel.y - body.contentY
        const end = top + panel.height
        if (end > body.height + 1)
            return Math.min(end - body.height, top > 0 ? top : 0.8 * body.height)
        return panel.height > body.height ? Math.min(0, end - gap - 1.2 * fontSize) : Math.min(0, top)
    }

    // A pointer confirms only a warning that is in sight; otherwise it brings the warning into sight.
    function tapInstall() {
        if (!ready)
            return
        const distance = distanceToWarning()
        if (distance > -1 && distance < 1) {
            answer(requestInstall)
        } else {
            scrollBy(distance)
            startAnew()
        }
    }

    // Characters that show nothing, or that change the direction of the text around them, in UTF-16. Few texts have any,
    // so that the expression is compiled on demand.
    function deceptive() {
        return new RegExp("[" + [
            "\\u0000-\\u001f\\u007f-\\u009f", // control characters
            "\\u00ad", // soft hyphen
            "\\u034f", // combining grapheme joiner
            "\\u061c\\u200e\\u200f\\u202a-\\u202e", // direction marks, embeddings and overrides
            "\\u115f\\u1160\\u3164\\uffa0", // Hangul fillers
            "\\u17b4\\u17b5", // Khmer inherent vowels
            "\\u180b-\\u180f", // Mongolian variation selectors and vowel separator
            "\\u200b\\u2800", // zero width space, Braille pattern without dots
            "\\u2060-\\u206f", // word joiner, invisible operators, direction isolates, deprecated format characters
            "\\ufff0-\\ufffc", // interlinear annotations, object replacement and unassigned specials
        ].join("") + "]|" + [
            "[\\udb40-\\udb43][\\udc00-\\udfff]", // U+E0000 to U+E0FFF: tags, variation selectors
            "\\ud80d[\\udc30-\\udc3f]", // U+13430 to U+1343F: format controls of Egyptian hieroglyphs
            "\\ud82f[\\udca0-\\udca3]", // U+1BCA0 to U+1BCA3: format controls of shorthand
            "\\ud834[\\udd59\\udd73-\\udd7a]", // U+1D159, U+1D173 to U+1D17A: null notehead and format controls of music
        ].join("|"), "g")
    }

    // Makes text of a package, which may come from anybody, safe to show: one line without deceptive characters, or
    // nothing if no letter is left. A text that is too long loses its middle.
    function harmless(text, longest) {
        // A surrogate pair that the cut would halve is left out.
        const shown = text.length > longest ? text.slice(0, longest / 2).replace(/[\ud800-\udbff]$/, "") + "…"
                                              + text.slice(-longest / 2).replace(/^[\udc00-\udfff]/, "") : text
        if (/^[!-~]+( [!-~]+)*$/.test(shown))
            return shown
        const safe = shown.replace(/\s+/g, " ").trim().replace(deceptive(), "\ufffd")
        return /[^ \u200c\u200d\ufe00-\ufe0f\ufffd]/.test(safe) ? safe : ""
    }

    function mix(from, to, part) {
        return Qt.tint(from, Qt.rgba(to.r, to.g, to.b, part))
    }

    function scrollBy(distance) {
        body.cancelFlick()
        body.contentY = Math.max(0, Math.min(body.contentHeight - body.height, body.contentY + distance))
    }

    // Scrolls to the file if it has the keyboard focus.
    function revealFile() {
        if (file.activeFocus) {
            const top = card.y + file.y - body.contentY
            scrollBy(Math.min(top, Math.max(0, top + file.height - body.height)))
        }
    }

    // Scrolls. At the end the focus moves instead, to the file and back, unless the file is out of sight.
    function moveBy(distance) {
        const before = body.contentY
        scrollBy(distance)
        if (card.visible && body.contentY === before && card.y + card.height <= before + body.height + 1)
            focusByKey(file.activeFocus ? cancel : file)
    }

    function focusByKey(item) {
        item.forceActiveFocus(Qt.TabFocusReason)
    }

    // A key that was pressed before the dialog came up and is still held down repeats. A repetition is no answer, as far
    // as the platform tells it from a press.
    function handleKey(event) {
        event.accepted = true
        switch (event.modifiers & ~(Qt.ShiftModifier | Qt.KeypadModifier) ? Qt.Key_unknown : event.key) {
        case Qt.Key_Escape:
        case Qt.Key_Back:
            if (!event.isAutoRepeat)
                answer(dismissed)
            break
        case Qt.Key_Return:
        case Qt.Key_Enter:
        case Qt.Key_Space:
            if (!event.isAutoRepeat)
                activeFocusItem.press()
            break
        case Qt.Key_Left:
        case Qt.Key_Right:
            focusByKey(cancel.activeFocus ? install : cancel)
            break
        case Qt.Key_Up:
            moveBy(-2 * gap)
            break
        case Qt.Key_Down:
            moveBy(2 * gap)
            break
        case Qt.Key_PageUp:
            scrollBy(2 * gap - body.height)
            break
        case Qt.Key_PageDown:
            scrollBy(body.height - 2 * gap)
            break
        default:
            event.accepted = false
        }
    }

    title: question.text
    color: mix(palette.base, palette.text, 0.15)
    // The window has the size of the screen from the beginning, so that the layout is computed only once.
    width: Screen.width
    height: Screen.height
    onClosing: answer(dismissed)
    // A dialog that cannot be painted counts as dismissed; without a handler Qt would end the whole program. The answer
    // is deferred: it may open the next file's dialog, and the error may come inside of showFullScreen().
    onSceneGraphError: Qt.callLater(answer, dismissed)
    onActiveFocusItemChanged: if (install.activeFocus || file.activeFocus) focusShown = true

    // Turned, covered or hidden meanwhile: a tap may be meant for something else again.
    onWidthChanged: startAnew()
    onHeightChanged: startAnew()
    // So may a key, so "Cancel" has the focus again. It gets the focus after the activation. If the focus came first,
    // screen readers would go back from the button to the window, and say the dialog twice.
    onActiveChanged: {
        startAnew()
        install.focus = file.focus = false
        cancel.focus = active
    }
    onVisibilityChanged: startAnew()
    // The dialog of another request may show its package in this one too.
    onInfoChanged: startAnew()
    onFrameSwapped: {
        if (!ready && active && !touch.active && !installTap.pressed && !cancelTap.pressed) {
            if (rested)
                ready = true
            else
                rest.start()
        }
    }

    SystemPalette { id: palette }

    Timer {
        id: rest
        interval: 700
        onTriggered: {
            dialog.rested = true
            dialog.update()
        }
    }

    // A touch that comes too early is too early for its whole length, also one beside the buttons: somebody still uses the
    // application below the dialog. The buttons keep their touches to themselves.
    PointHandler {
        id: touch
        onActiveChanged: if (!dialog.ready) dialog.startAnew()
    }

    // A sheet at the lower edge, where the thumb reaches the buttons.
    Rectangle {
        id: page

        readonly property real column: width - 2 * dialog.gap

        x: Math.round((dialog.width - width) / 2)
        y: dialog.height - height
        width: Math.min(dialog.width, Math.max(560 * dialog.dp, 36 * dialog.fontSize))
        height: Math.min(dialog.height - dialog.gap, content.height + actions.height + 2 * dialog.gap)
        color: palette.base
        LayoutMirroring.enabled: Qt.locale().textDirection === Qt.RightToLeft
        LayoutMirroring.childrenInherit: true
        Accessible.role: Accessible.Dialog
        Accessible.name: name.text === "" ? dialog.packageFile || question.text : (name.text + " " + dialog.packageVersion).trim()
        Accessible.description: warning.text
        Keys.onPressed: (event) => dialog.handleKey(event)

        // The round upper corners are apart: a rectangle without such corners is painted faster.
        Rectangle {
            y: -dialog.gap
            z: -1
            width: page.width
            height: 2 * dialog.gap
            radius: dialog.gap
            color: palette.base
        }
        Flickable {
            id: body
            width: page.width
            height: page.height - actions.height - 1.5 * dialog.gap
            contentHeight: content.height
            onContentHeightChanged: dialog.revealFile()
            interactive: contentHeight > height
            clip: interactive

            Column {
                id: content
                spacing: 0.75 * dialog.gap

                Column {
                    Text {
                        id: question
                        Accessible.role: Accessible.Heading
                        Accessible.name: text
                        x: dialog.gap
                        width: page.column
                        //: Heading of the dialog that asks whether a package file is to be installed
                        //% "Install this app?"
                        text: qsTrId("installationhandler-install-question")
                        font.pixelSize: dialog.smallSize
                        color: dialog.faintInk
                        horizontalAlignment: Text.AlignLeft
                        wrapMode: Text.Wrap
                    }
                    Text {
                        id: name
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                        visible: text !== ""
                        clip: true
                        x: dialog.gap - dialog.room
                        width: page.column + 2 * dialog.room
                        padding: dialog.room
                        bottomPadding: dialog.room / 2
                        text: dialog.info ? dialog.harmless(dialog.info.name, 128) : ""
                        textFormat: Text.PlainText
                        font.pixelSize: 1.35 * dialog.fontSize
                        font.bold: true
                        color: palette.text
                        horizontalAlignment: Text.AlignLeft
                        wrapMode: Text.Wrap
                        maximumLineCount: 2
                        elide: Text.ElideRight
                    }
                    Text {
                        id: version

                        //: Version of the package
                        //: %1 is the version
                        //% "Version %1"
                        readonly property string pattern: qsTrId("installationhandler-version")

                        Accessible.role: Accessible.StaticText
                        Accessible.name: pattern.arg(dialog.packageVersion)
                        visible: dialog.packageVersion !== ""
                        clip: true
                        x: dialog.gap - dialog.room / 2
                        width: page.column + dialog.room
                        padding: dialog.room / 2
                        // The isolates keep a version of another direction apart from the words around it.
                        text: pattern.arg("\u2068" + dialog.packageVersion + "\u2069")
                        textFormat: Text.PlainText
                        font.pixelSize: dialog.smallSize
                        color: dialog.faintInk
                        horizontalAlignment: Text.AlignLeft
                        elide: Text.ElideRight
                    }
                }
                Rectangle {
                    id: panel
                    width: page.width
                    height: warning.height + 2 * warning.y
                    color: Qt.tint(palette.base, "#38ff9d00")

                    // The badge is drawn, because a font may lack it.
                    Rectangle {
                        id: badge
                        anchors.left: parent.left
                        anchors.leftMargin: dialog.gap
                        y: Math.round(warning.y + (warning.contentHeight / warning.lineCount - height) / 2)
                        width: 2 * Math.round(0.6 * dialog.fontSize)
                        height: width
                        radius: width / 2
                        color: dialog.warningInk

                        Rectangle {
                            x: (badge.width - width) / 2
                            y: 0.2 * badge.width
                            width: 0.14 * badge.width
                            height: 0.36 * badge.width
                            color: palette.base
                        }
                        Rectangle {
                            x: (badge.width - width) / 2
                            y: 0.66 * badge.width
                            width: 0.14 * badge.width
                            height: width
                            color: palette.base
                        }
                    }
                    Text {
                        id: warning
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                        anchors.right: parent.right
                        anchors.rightMargin: dialog.gap
                        width: page.column - badge.width - 0.75 * dialog.gap
                        y: 0.75 * dialog.gap
                        //: Warning above the details of a package that the user got elsewhere than in the app store
                        //% "This app is not from the app store and has not been checked. It could harm your device or data. Install it only if you trust where you got it."
                        text: qsTrId("installationhandler-untrusted-source")
                        font.pixelSize: dialog.fontSize
                        color: palette.text
                        horizontalAlignment: Text.AlignLeft
                        wrapMode: Text.Wrap
                    }
                }
                Rectangle {
                    id: card
                    visible: dialog.packageFile !== ""
                    width: page.width
                    height: file.y + file.height
                    color: dialog.mix(palette.base, palette.text, 0.06)

                    Text {
                        id: label
                        visible: summary.visible
                        x: dialog.gap
                        y: 0.75 * dialog.gap
                        width: summary.width
                        //: Label of the summary that the package's author wrote, in contrast to the system's own words
                        //% "In the app's own words:"
                        text: qsTrId("installationhandler-own-words")
                        font.pixelSize: dialog.smallSize
                        color: dialog.faintInk
                        horizontalAlignment: Text.AlignLeft
                        wrapMode: Text.Wrap
                    }
                    Text {
                        id: summary
                        Accessible.role: Accessible.StaticText
                        Accessible.name: label.text + " " + text
                        visible: text !== ""
                        clip: true
                        x: dialog.gap
                        y: label.y + label.height
                        width: page.column
                        padding: dialog.room
                        leftPadding: 0.75 * dialog.gap
                        rightPadding: leftPadding
                        text: dialog.info ? dialog.harmless(dialog.info.summary, 1000) : ""
                        textFormat: Text.PlainText
                        font.pixelSize: dialog.fontSize
                        color: palette.text
                        horizontalAlignment: Text.AlignLeft
                        wrapMode: Text.Wrap
                        maximumLineCount: 4
                        elide: Text.ElideRight

                        Rectangle {
                            anchors.left: parent.left
                            y: dialog.room
                            width: dialog.gap / 4
                            height: parent.height - 2 * y
                            color: dialog.faintInk
                        }
                    }
                    Rectangle {
                        id: file

                        property bool expanded: false

                        function press() {
                            expanded = !expanded
                        }

                        y: summary.visible ? summary.y + summary.height + dialog.gap / 2 : 0
                        width: page.width
                        height: Math.max(48 * dialog.dp, path.height + dialog.gap / 2)
                        color: fileTap.pressed ? dialog.mix(palette.base, palette.text, 0.14) : "transparent"
                        border.width: dialog.focusShown && activeFocus ? 3 * dialog.hairline : 0
                        border.color: palette.text
                        activeFocusOnTab: true
                        onActiveFocusChanged: dialog.revealFile()
                        Accessible.role: Accessible.Button
                        Accessible.name: dialog.packageFile
                        Accessible.description: expanded
                            //: Spoken by screen readers for the file's name, which can be pressed, while its whole path is shown
                            //% "Hide full path"
                            ? qsTrId("installationhandler-hide-path")
                            //: Spoken by screen readers for the file's name, which can be pressed, while its path is shortened
                            //% "Show full path"
                            : qsTrId("installationhandler-show-path")
                        Accessible.onPressAction: press()

                        TapHandler {
                            id: fileTap
                            longPressThreshold: install.longestPress
                            onPressedChanged: if (!dialog.ready) dialog.startAnew()
                            onTapped: file.press()
                        }

                        // A path reads from left to right in all languages. The mark before it says so, so that a letter
                        // of another direction cannot move the file's extension.
                        Item {
                            id: path
                            width: page.column - dialog.fontSize / 2
                            height: fileName.height + (folder.visible ? folder.height : 0)
                            anchors.left: parent.left
                            anchors.leftMargin: dialog.gap - dialog.room
                            anchors.verticalCenter: parent.verticalCenter

                            Text {
                                id: fileName
                                clip: true
                                width: path.width
                                padding: dialog.room
                                bottomPadding: dialog.room / 2
                                text: "\u200e" + dialog.packageFile.slice(dialog.folderLength)
                                textFormat: Text.PlainText
                                font.pixelSize: dialog.fontSize
                                color: palette.text
                                horizontalAlignment: Text.AlignLeft
                                elide: file.expanded ? Text.ElideNone : Text.ElideMiddle
                                wrapMode: file.expanded ? Text.Wrap : Text.NoWrap
                            }
                            Text {
                                id: folder
                                y: fileName.height
                                visible: dialog.folderLength > 0
                                clip: true
                                width: path.width
                                padding: dialog.room
                                topPadding: dialog.room / 2
                                text: "\u200e" + dialog.packageFile.slice(0, dialog.folderLength)
                                textFormat: Text.PlainText
                                font.pixelSize: dialog.smallSize
                                color: dialog.faintInk
                                horizontalAlignment: Text.AlignLeft
                                elide: file.expanded ? Text.ElideNone : Text.ElideMiddle
                                wrapMode: file.expanded ? Text.Wrap : Text.NoWrap
                            }
                        }
                        // An arrow that points down, or up when the path is open: two sides of a square.
                        Item {
                            id: arrow
                            anchors.right: parent.right
                            anchors.rightMargin: dialog.gap + 0.35 * dialog.fontSize - width / 2
                            y: path.y + dialog.room + (file.expanded ? 0.75 : 0.45) * dialog.fontSize - height / 2
                            width: 20
                            height: 20
                            scale: dialog.fontSize / 40
                            rotation: file.expanded ? 225 : 45

                            Rectangle {
                                y: 15
                                width: 20
                                height: 5
                                color: dialog.faintInk
                                antialiasing: true
                            }
                            Rectangle {
                                x: 15
                                width: 5
                                height: 20
                                color: dialog.faintInk
                                antialiasing: true
                            }
                        }
                    }
                }
            }
        }

        Grid {
            id: actions

            readonly property real half: (page.column - spacing) / 2
            readonly property real cell: columns === 1 ? page.column : half
            readonly property real cellHeight: Math.max(48 * dialog.dp, cancelLabel.implicitHeight + 1.5 * dialog.gap)

            x: dialog.gap
            y: body.height + dialog.gap / 2
            columns: Math.max(cancelLabel.implicitWidth, installLabel.implicitWidth) > half - dialog.gap ? 1 : 2
            spacing: dialog.gap

            Rectangle {
                id: cancel

                function press() {
                    dialog.answer(dialog.dismissed)
                }

                width: actions.cell
                height: actions.cellHeight
                radius: dialog.gap / 4
                color: dialog.mix(palette.base, palette.highlight, cancelTap.pressed ? 0.3 : 0.2)
                border.width: dialog.focusShown && activeFocus ? 3 * dialog.hairline : dialog.hairline
                border.color: dialog.focusShown && activeFocus ? palette.text : dialog.outline
                activeFocusOnTab: true
                Accessible.role: Accessible.Button
                Accessible.name: cancelLabel.text
                Accessible.onPressAction: press()

                TapHandler {
                    id: cancelTap
                    gesturePolicy: TapHandler.ReleaseWithinBounds
                    longPressThreshold: install.longestPress
                    onPressedChanged: if (!dialog.ready) dialog.startAnew()
                    onTapped: cancel.press()
                }
                Text {
                    id: cancelLabel
                    anchors.fill: parent
                    //: Button that closes the dialog without installing anything; as short as possible
                    //% "Cancel"
                    text: qsTrId("installationhandler-cancel")
                    font.pixelSize: dialog.fontSize
                    color: palette.text
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideRight
                }
            }
            Rectangle {
                id: install

                // A button takes a press of any length, in seconds.
                readonly property real longestPress: 1000000

                function press() {
                    dialog.answer(dialog.requestInstall)
                }

                width: actions.cell
                height: actions.cellHeight
                radius: dialog.gap / 4
                color: dialog.mix(palette.base, palette.highlight, !dialog.ready ? 0 : installTap.pressed ? 0.3 : 0.2)
                border.width: dialog.focusShown && activeFocus ? 3 * dialog.hairline : dialog.hairline
                border.color: dialog.focusShown && activeFocus ? palette.text : dialog.outline
                activeFocusOnTab: true
                Accessible.role: Accessible.Button
                Accessible.name: installLabel.text
                Accessible.onPressAction: press()

                TapHandler {
                    id: installTap
                    gesturePolicy: TapHandler.ReleaseWithinBounds
                    longPressThreshold: install.longestPress
                    onPressedChanged: if (!dialog.ready) dialog.startAnew()
                    onTapped: dialog.tapInstall()
                }
                Text {
                    id: installLabel
                    anchors.fill: parent
                    //: Button that starts the installation; as short as possible
                    //% "Install"
                    text: qsTrId("installationhandler-install")
                    font.pixelSize: dialog.fontSize
                    font.bold: true
                    color: dialog.ready ? palette.text : dialog.faintInk
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideRight
                }
            }
        }

        // Shows which part of the texts is visible, when they do not all fit.
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
