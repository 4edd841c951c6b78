# SPDX-FileCopyrightText: velmora-installationhandler contributors
# SPDX-License-Identifier: BSD-3-Clause

# The target package_source makes NAME-VERSION.tar.xz in the build folder, of the committed tree. The same commit gives the
# same bytes: the times are those of the commit, and the permissions do not depend on git's configuration. A source without a
# repository of its own may lie in another project's, which must not be taken for it.
set(VELMORA_RELEASE "${PROJECT_NAME}-${PROJECT_VERSION}")

add_custom_target(package_source
    COMMAND git "--git-dir=${CMAKE_SOURCE_DIR}/.git" -c tar.umask=0022 archive --format=tar "--prefix=${VELMORA_RELEASE}/"
        "--output=${CMAKE_BINARY_DIR}/${VELMORA_RELEASE}.tar" HEAD
    COMMAND xz --force --threads=1 "${CMAKE_BINARY_DIR}/${VELMORA_RELEASE}.tar"
    COMMENT "Making ${VELMORA_RELEASE}.tar.xz"
    VERBATIM)
