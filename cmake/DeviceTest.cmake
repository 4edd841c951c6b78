# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# Tests that run on a device in a sandbox, where the product of this build is installed at its real absolute paths.
# Including this file adds the test "stage", which installs the build for all of them, and the test "packagekit-backend",
# which makes what a device with PackageKit needs, the same for every build.

include_guard(GLOBAL)

set(VELMORA_STAGE "${CMAKE_BINARY_DIR}/stage")

add_test(NAME stage
    COMMAND "${CMAKE_COMMAND}" "-DBUILD=${CMAKE_BINARY_DIR}" "-DSTAGE=${VELMORA_STAGE}"
        -P "${CMAKE_CURRENT_LIST_DIR}/Stage.cmake")
set_tests_properties(stage PROPERTIES FIXTURES_SETUP stage TIMEOUT 120)

set(VELMORA_PACKAGEKIT "${CMAKE_SOURCE_DIR}/build/packagekit")

add_test(NAME packagekit-backend
    COMMAND "${CMAKE_SOURCE_DIR}/sandbox/packagekit/build-backend" "${VELMORA_PACKAGEKIT}")
set_tests_properties(packagekit-backend PROPERTIES FIXTURES_SETUP packagekit TIMEOUT 600)

# Coverage is counted in files beside the objects.
set(VELMORA_SHOW_BUILD --show)
if(CMAKE_CXX_FLAGS MATCHES "--coverage")
    set(VELMORA_SHOW_BUILD --writable)
endif()

# add_device_test(NAME <name> COMMAND <program or target> [<argument>...] [PACKAGEKIT] [CGROUP] [WRITABLE <folder>]
#     [TIMEOUT <seconds>] [LABELS <label>...])
#
# The program sees the project and the build folder read-only, but the folder WRITABLE, which is made if it is absent. It
# starts its own buses, and passes with exit status 0. With PACKAGEKIT there is a real PackageKit on the device, and with
# CGROUP the device can run systemd's user manager. Without TIMEOUT the program may take 300 seconds.
function(add_device_test)
    cmake_parse_arguments(PARSE_ARGV 0 TEST "PACKAGEKIT;CGROUP" "NAME;TIMEOUT;WRITABLE" "COMMAND;LABELS")
    if(TEST_UNPARSED_ARGUMENTS OR NOT TEST_NAME OR NOT TEST_COMMAND)
        message(FATAL_ERROR "add_device_test: NAME and COMMAND are needed; not understood: ${TEST_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT TEST_TIMEOUT)
        set(TEST_TIMEOUT 300)
    endif()
    # The presets run 12 jobs. An ordinary test counts as three of them, a slow one, which mostly waits, as one.
    set(processors 3)
    if("slow" IN_LIST TEST_LABELS)
        set(processors 1)
    endif()
    # A leak sanitizer that unwinds whole stacks takes its time.
    if(CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
        math(EXPR TEST_TIMEOUT "4 * ${TEST_TIMEOUT}")
    endif()
    list(POP_FRONT TEST_COMMAND program)
    if(TARGET "${program}")
        set(program "$<TARGET_FILE:${program}>")
    endif()
    set(fixtures stage)
    set(options)
    if(TEST_PACKAGEKIT)
        list(APPEND fixtures packagekit)
        list(APPEND options --packagekit "${VELMORA_PACKAGEKIT}")
    endif()
    if(TEST_CGROUP)
        list(APPEND options --cgroup)
    endif()
    if(TEST_WRITABLE)
        file(MAKE_DIRECTORY "${TEST_WRITABLE}")
        list(APPEND options --writable "${TEST_WRITABLE}")
    endif()
    add_test(NAME "${TEST_NAME}"
        COMMAND "${CMAKE_SOURCE_DIR}/sandbox/device" --stage "${VELMORA_STAGE}" ${options}
            ${VELMORA_SHOW_BUILD} "${CMAKE_BINARY_DIR}" --no-buses -- "${program}" ${TEST_COMMAND})
    set_tests_properties("${TEST_NAME}" PROPERTIES
        FIXTURES_REQUIRED "${fixtures}" TIMEOUT "${TEST_TIMEOUT}" LABELS "${TEST_LABELS}"
        PROCESSORS "${processors}")
endfunction()
