// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "texts.h"
#include "waitfor.h"

#include <QTest>

/** The application object that exists while a test class runs. */
enum class TestApplication {
    None, /**< No application object. */
    Core, /**< A QCoreApplication. There is neither a system bus nor a session bus. */
    Gui, /**< A QGuiApplication without a display, with a system bus and a session bus that only the test uses. */
};

/** The machines that a test class runs on. */
enum class TestPlace {
    Device, /**< A device in a sandbox only, because the class needs or overwrites files at the device's absolute paths.
             */
    Anywhere, /**< Any machine, as any user. HOME is a temporary folder. */
};

/** Makes a test class known to the main() of its executable. Use VELMORA_TEST. */
class TestRegistration
{
public:
    using Run = int (*)(int argc, char **argv);

    TestRegistration(const char *name, TestPlace place, TestApplication application, Run function)
        : m_name(name)
        , m_place(place)
        , m_application(application)
        , m_run(function)
        , m_next(s_first)
    {
        s_first = this;
    }

    /** The first of all registrations. The others follow it through next(). */
    static const TestRegistration *first() { return s_first; }
    const TestRegistration *next() const { return m_next; }

    const char *name() const { return m_name; }

    /** Prepares the process, creates the application object and runs the class with the arguments of Qt Test. */
    int run(int argc, char **argv) const;

private:
    static inline const TestRegistration *s_first = nullptr;

    const char *m_name;
    TestPlace m_place;
    TestApplication m_application;
    Run m_run;
    const TestRegistration *m_next;
};

template<typename Test>
int runTest(int argc, char **argv)
{
    Test test;
    return QTest::qExec(&test, argc, argv);
}

/** Takes the place of QTEST_MAIN: `VELMORA_TEST(RpmInfoTest, Anywhere, Core)`. add_unit_tests() names the same class.
 */
#define VELMORA_TEST(Class, place, application)                                                                        \
    static const TestRegistration Class##Registration(#Class, TestPlace::place, TestApplication::application,          \
                                                      runTest<Class>);
