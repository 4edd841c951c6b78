// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

class QGuiApplication;
class QQuickView;

/**
 * Source of the process's application object and of QML views.
 *
 * Devices keep prepared ones at hand to start faster. This implementation has no
 * such store and makes them new.
 */
class MDeclarativeCache
{
public:
    MDeclarativeCache() = delete;

    /**
     * Returns a new application object made from the command line; the caller owns it.
     *
     * The toolkit takes its own options out of @p argv and lowers @p argc. Both must
     * outlive the application object.
     */
    static QGuiApplication *qApplication(int &argc, char **argv);

    /** Returns a new, hidden view with an engine of its own; the caller owns it. */
    static QQuickView *qQuickView();
};
