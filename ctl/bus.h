// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusConnection>
#include <QDBusError>

class Interruption;

/** The connections to the session bus: one to call the service, and one that can become a monitor. */
namespace Bus {

enum State {
    Connected,
    /** There is no bus. */
    Absent,
    /** There is something that does not answer. The process can only be left by std::_Exit() then. */
    Silent,
    /** A signal of the system has come first. The process can only be left by std::_Exit() then. */
    Interrupted,
};

/** Connects once. needsMonitor: makes the second connection too. seconds: the bus has so long, without a limit if 0. */
State connect(bool needsMonitor, int seconds, const Interruption &interruption);

QDBusConnection connection();
QDBusConnection monitorConnection();

/** Whether the bus has answered a call, be it by an error. A bus that ends leaves calls without an answer. */
bool hasAnswered(const QDBusError &error);

}
