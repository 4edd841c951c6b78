// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15
import QtQuick.Window 2.15
import Qt.labs.folderlistmodel 2.15

// A home screen for the pictures: the applications of the device, and the packages that its user has downloaded. It prints
// the path of a package that is tapped.
Window {
    id: home

    readonly property real dp: Screen.pixelDensity * 25.4 / 160
    readonly property real gap: 16 * dp

    // The folders are read in the background.
    visible: launchers.status === FolderListModel.Ready && packages.status === FolderListModel.Ready
    width: Screen.width
    height: Screen.height

    SystemPalette { id: palette }

    Rectangle {
        anchors.fill: parent
        gradient: Gradient {
            GradientStop { position: 0; color: "#1f4e79" }
            GradientStop { position: 1; color: "#3b8686" }
        }
    }

    Grid {
        x: home.gap
        y: 2 * home.gap
        columns: 4
        rowSpacing: home.gap

        Repeater {
            model: FolderListModel {
                id: launchers
                folder: "file:///usr/share/applications"
                nameFilters: ["*.desktop"]
            }

            Column {
                width: (home.width - 2 * home.gap) / 4
                spacing: home.gap / 4

                Rectangle {
                    anchors.horizontalCenter: parent.horizontalCenter
                    width: 52 * home.dp
                    height: width
                    radius: home.gap
                    color: ["#e6784b", "#4b8fe6", "#4ea65c", "#9a62c7", "#c78f1e", "#c9506f"][index % 6]

                    Text {
                        anchors.centerIn: parent
                        text: fileName[0].toUpperCase()
                        font.pixelSize: 26 * home.dp
                        font.bold: true
                        color: "white"
                    }
                }
                Text {
                    width: parent.width
                    text: fileBaseName
                    font.pixelSize: 12 * home.dp
                    color: "white"
                    horizontalAlignment: Text.AlignHCenter
                    elide: Text.ElideRight
                }
            }
        }
    }

    Rectangle {
        id: downloads
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: home.gap
        height: list.y + list.height + home.gap
        radius: home.gap
        color: palette.base

        Text {
            x: home.gap
            y: 0.75 * home.gap
            text: "Downloads"
            font.pixelSize: 13 * home.dp
            font.bold: true
            color: palette.text
            opacity: 0.7
        }
        Column {
            id: list
            y: 2.25 * home.gap
            width: parent.width

            Repeater {
                model: FolderListModel {
                    id: packages
                    folder: "file:///home/velmora/Downloads"
                    nameFilters: ["*.rpm"]
                }

                Rectangle {
                    width: list.width
                    height: 56 * home.dp
                    color: tap.pressed ? Qt.darker(palette.base, 1.15) : palette.base

                    Rectangle {
                        id: icon
                        x: home.gap
                        anchors.verticalCenter: parent.verticalCenter
                        width: 36 * home.dp
                        height: width
                        radius: home.gap / 2
                        color: palette.highlight

                        Text {
                            anchors.centerIn: parent
                            text: "rpm"
                            font.pixelSize: 12 * home.dp
                            font.bold: true
                            color: "white"
                        }
                    }
                    Text {
                        anchors.left: icon.right
                        anchors.right: parent.right
                        anchors.margins: home.gap
                        anchors.verticalCenter: parent.verticalCenter
                        text: fileName
                        font.pixelSize: 14 * home.dp
                        color: palette.text
                        elide: Text.ElideMiddle
                    }
                    MouseArea {
                        id: tap
                        anchors.fill: parent
                        onClicked: console.log(filePath)
                    }
                }
            }
        }
    }
}
