#pragma once

/// @file
/// A look at the picture of a dialog.

#include <QColor>
#include <QImage>

namespace qttest {

/// How many pixels are as dark as letters.
inline int darkPixels(const QImage& picture) {
    int dark = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            dark += qGray(picture.pixel(x, y)) < 64 ? 1 : 0;
    }
    return dark;
}

}  // namespace qttest
