# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# Debian's cross compiler for aarch64. The programs that it makes run under emulation.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64-static -E LD_PRELOAD=/build/emulation.so)
set(PKG_CONFIG_EXECUTABLE aarch64-linux-gnu-pkg-config)
