// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "rpmconfiguration.h"

#include <rpm/rpmlib.h>
#include <rpm/rpmlog.h>
#include <rpm/rpmmacro.h>

// librpm adds each load to the ones before. Without dropping those first, every
// load would cost the process tens of kilobytes for good. It also keeps its
// warnings and errors, some hundred bytes for each damaged package.
void RpmConfiguration::reload()
{
    rpmlogClose();
    rpmFreeMacros(nullptr);
    rpmFreeRpmrc();
    rpmReadConfigFiles(nullptr, nullptr);
}

void RpmConfiguration::loadOnce()
{
    static bool loaded = false;
    if (!loaded) {
        rpmReadConfigFiles(nullptr, nullptr);
        loaded = true;
    }
}
