// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

/** The event that a request waits for. */
enum class State {
    /** The service reads the package. */
    Reading,
    /** The user's answer to the dialog, and the installation after it. */
    Confirming,
    /** The installation of a package that nobody need confirm. */
    Installing,
    /** The service, which has not answered, or is busy with the dialog of another request. */
    Waiting,
    /** The removal of a package. */
    Removing,
};
