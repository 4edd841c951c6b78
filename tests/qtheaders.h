// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

// The headers of Qt that most tests include. See cmake/QtHeaders.cmake.

#include <QtDBus>
#include <QtQuick>
#include <QtTest>
