// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Declines as soon as it is on screen.
TestDialog {
    onShown: dismissed()
}
