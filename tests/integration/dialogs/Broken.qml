// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

import QtQuick 2.15

// No QML at all from here on.
Window {
