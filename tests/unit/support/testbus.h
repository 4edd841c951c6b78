// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QProcess>

/** A message bus that lives as long as the object, and whose address is in the environment. */
class TestBus
{
public:
    explicit TestBus(const char *variable);
    ~TestBus();

private:
    QProcess m_daemon;
};

/** Ends the process unless it runs on a device in a sandbox: the tests overwrite the system's files. */
void requireDevice();
