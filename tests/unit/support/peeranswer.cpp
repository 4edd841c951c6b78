// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "peeranswer.h"

PeerAnswer PeerAnswer::values(const QByteArray &text)
{
    return {Kind::Values, text, {}, {}};
}

PeerAnswer PeerAnswer::error(const QByteArray &name, const QByteArray &message)
{
    return {Kind::Error, message, name, {}};
}

PeerAnswer PeerAnswer::held()
{
    return {Kind::Held, {}, {}, {}};
}

PeerAnswer PeerAnswer::death()
{
    return {Kind::Death, {}, {}, {}};
}

PeerAnswer PeerAnswer::after(const std::function<void()> &action) const
{
    PeerAnswer answer = *this;
    answer.preparation = action;
    return answer;
}
