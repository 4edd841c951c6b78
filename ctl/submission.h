// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "request.h"

/** A request that ends when the service has answered. */
class Submission : public Request
{
    Q_OBJECT

public:
    using Request::Request;

protected:
    void handleAnswer() override;
};
