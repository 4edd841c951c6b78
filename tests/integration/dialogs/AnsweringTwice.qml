// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Accepts and declines at once, as after two taps that arrive together.
TestDialog {
    onShown: {
        requestInstall()
        dismissed()
    }
}
