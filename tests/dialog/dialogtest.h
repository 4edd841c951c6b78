// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "catalogues.h"

#include <QGuiApplication>
#include <QTest>

#include <memory>

/** A test of the installed dialog, in English, in the C locale. Whatever it logs makes the test fail. */
class DialogTest : public QObject
{
    Q_OBJECT

protected:
    /** Changes the language before the dialog is shown. */
    void speak(const QLocale &locale);

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    std::unique_ptr<Catalogues> m_catalogues;
};

/** Runs the tests of a class, unattended. Only on a device. */
template<typename Test>
int runDialogTest(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}
