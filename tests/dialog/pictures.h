// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QImage>
#include <QRect>

/** The part of a picture that differs from the colour of its lower right corner. */
QRect inkOf(const QImage &picture);
