// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

class QGuiApplication;
class QQuickView;

/**
 * Source of the process's application object and of QML views.
 *
 * A device may keep prepared objects to start faster. This implementation creates
 * new ones.
 */
class MDeclarativeCache
{
public:
    MDeclarativeCache() = delete;

    /**
     * Returns a new application object made from the command line; the caller owns it.
     *
     * Qt removes its own options from argv and lowers argc. Both must outlive
     * the application object.
     */
    static QGuiApplication *qApplication(int &argc, char **argv);

    /** Returns a new, hidden view with an engine of its own; the caller owns it. */
    static QQuickView *qQuickView();
};
