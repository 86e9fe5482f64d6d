#include "painted_rect.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace tarn {

QRect painted_rect(const QImage& image)
{
    QRect painted;
    const int width = image.width();
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        // Nearly every row is empty: the first pixel is, and each equals the one before.
        if (row[0] == 0 && std::memcmp(row, row + 1, std::size_t(width - 1) * sizeof(QRgb)) == 0)
            continue;
        const auto set = [](QRgb pixel) { return pixel != 0; };
        const auto left = std::find_if(row, row + width, set) - row;
        const auto right
            = std::find_if(std::make_reverse_iterator(row + width), std::make_reverse_iterator(row), set).base() - row;
        painted |= QRect(int(left), y, int(right - left), 1);
    }
    return painted;
}

} // namespace tarn
