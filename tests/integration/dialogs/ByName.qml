// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Answers as soon as it is on screen: declines a file in a folder "declined", and accepts others.
TestDialog {
    onShown: fileName.includes("/declined/") ? dismissed() : requestInstall()
}
