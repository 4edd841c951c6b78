// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QList>
#include <QStringList>

/**
 * Stands in for the functions of librpm that look into its database, in a program that has this among its own sources:
 * the database answers every question with the packages of the test's choice, and each call is written down.
 */
namespace FakeRpmDatabase {

/** The packages that are found, each as the paths of its files. */
extern QList<QStringList> packages;

/** What has been called, and with what, for example "rpmfiInit(files, 0)". */
extern QStringList calls;

}
