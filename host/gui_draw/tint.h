#pragma once

#include <QImage>

#include <algorithm>

namespace tarn {

/// Multiplies a premultiplied picture with an ARGB colour; `shades` takes the picture's brightness alone.
inline void apply_tint(QImage& image, quint32 argb, bool shades)
{
    const int alpha = qAlpha(argb);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const QRgb p = line[x];
            const int bright = std::max({qRed(p), qGreen(p), qBlue(p)});
            const auto mixed = [&](int level, int by) { return (shades ? bright : level) * by * alpha / (255 * 255); };
            line[x] = qRgba(mixed(qRed(p), qRed(argb)), mixed(qGreen(p), qGreen(argb)), mixed(qBlue(p), qBlue(argb)),
                            qAlpha(p) * alpha / 255);
        }
    }
}

} // namespace tarn
