# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# Tests that are written with pytest and run on a device in a sandbox.

include_guard(GLOBAL)
include(DeviceTest)

# add_device_pytest(<name> [ARGUMENTS <argument>...] [PACKAGEKIT] [CGROUP] [TIMEOUT <seconds>]
#     [LABELS <label>...])
#
# Adds the tests of the file test_<name>.py in the current folder as one test, which has a device of its own and is called
# after the folder and the file. The arguments are pytest's.
function(add_device_pytest name)
    cmake_parse_arguments(PARSE_ARGV 1 PYTEST "" "" "ARGUMENTS")
    get_filename_component(folder "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
    add_device_test(NAME "${folder}-${name}" ${PYTEST_UNPARSED_ARGUMENTS}
        COMMAND /usr/bin/python3 -B -m pytest -q -p no:cacheprovider ${PYTEST_ARGUMENTS}
            "${CMAKE_CURRENT_SOURCE_DIR}/test_${name}.py")
endfunction()
