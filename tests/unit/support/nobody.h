// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

/** Makes this process a nobody, whom file permissions apply to, for as long as the object lives. */
class Nobody
{
public:
    Nobody();
    ~Nobody();
    Nobody(const Nobody &) = delete;
    Nobody &operator=(const Nobody &) = delete;
};
