// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import Qt.labs.folderlistmodel 2.15

// Stays on screen and does what the tests say: each file NUMBER-COUNTER-SIGNAL[-SIGNAL]... that appears in the folder
// makes the dialog of that number emit these signals, once. It says so in the log before.
TestDialog {
    id: dialog

    property var done: ({})

    function obey(command) {
        const parts = command.split("-")
        if (Number(parts[0]) !== number || done[command])
            return
        done[command] = true
        console.log("dialog", number, "answers")
        for (const name of parts.slice(2))
            dialog[name]()
    }

    // The list may miss a file that comes while it is made. Another filter makes it anew.
    property Timer look: Timer {
        interval: 1000
        repeat: true
        running: true
        onTriggered: dialog.commands.showHidden = !dialog.commands.showHidden
    }

    property FolderListModel commands: FolderListModel {
        folder: "file:///run/test-dialog-commands"
        showDirs: false
        onCountChanged: {
            for (let row = 0; row < count; ++row)
                dialog.obey(get(row, "fileName"))
        }
    }
}
