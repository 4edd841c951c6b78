// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15

// A good component whose root cannot be shown.
Item {
    signal requestInstall()
    signal dismissed()
}
