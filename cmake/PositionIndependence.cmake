# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# Qt's libraries are linked without copy relocations, which -fPIE permits. A program that has some crashes when it starts.
# Distributions compile with -fPIE, so -fPIC comes after it; with link-time optimisation the linker compiles too.
add_compile_options(-fPIC)
add_link_options(-fPIC)
