#pragma once

#include <QImage>
#include <QRect>

namespace tarn {

/// The smallest rectangle around all pixels that are not fully transparent, of a picture with 32 bits a pixel.
QRect painted_rect(const QImage& image);

} // namespace tarn
