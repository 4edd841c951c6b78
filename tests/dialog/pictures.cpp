// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "pictures.h"

QRect inkOf(const QImage &picture)
{
    const QRgb ground = picture.pixel(picture.rect().bottomRight());
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != ground) {
                ink |= QRect(x, y, 1, 1);
            }
        }
    }
    return ink;
}
