// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "catalogues.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <QTest>

#include <memory>

/** A test of the installed dialog, in English and in the C locale. It fails if the program logs anything. */
class DialogTest : public QObject
{
    Q_OBJECT

protected:
    /** Changes the language of dialogs that are shown later. */
    void setLocale(const QLocale &locale);

    /** Changes the font size of dialogs that are shown later. */
    void setFontSize(double pixels);

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    std::unique_ptr<Catalogues> m_catalogues;
    QFont m_font = QGuiApplication::font();
    QPalette m_palette = QGuiApplication::palette();
};

/** Runs the tests of a class without a display. */
template<typename Test>
int runDialogTest(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

#define DIALOG_TEST_MAIN(Test)                                                                                         \
    int main(int argc, char **argv)                                                                                    \
    {                                                                                                                  \
        return runDialogTest<Test>(argc, argv);                                                                        \
    }
