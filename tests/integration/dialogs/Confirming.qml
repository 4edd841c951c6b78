// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Accepts as soon as it is on screen.
TestDialog {
    onShown: requestInstall()
}
