// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Window 2.15

// The floor of the dialog: three texts and two touch areas.
Window {
    id: page

    property string name
    property string version
    property string summary

    signal requestInstall()
    signal dismissed()

    Text {
        y: 0
        text: page.name
    }
    Text {
        y: 40
        text: page.version
    }
    Text {
        y: 80
        text: page.summary
    }
    MouseArea {
        y: 120
        width: 100
        height: 44
        onClicked: page.dismissed()
    }
    MouseArea {
        x: 120
        y: 120
        width: 100
        height: 44
        onClicked: page.requestInstall()
    }
}
