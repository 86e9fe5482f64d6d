#include "tool_layer.h"

#include "engine/mouse_tool.h"
#include "overlay_buffer.h"

#include <QPainter>

#include <algorithm>
#include <cstring>

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

void ToolLayer::clear(const QRect& part)
{
    for (int y = part.top(); y <= part.bottom(); ++y)
        std::memset(m_image.scanLine(y) + part.x() * 4, 0, std::size_t(part.width()) * 4);
}

QRect ToolLayer::update(MouseTool* tool, QSize logical, double dpr, double scale)
{
    QRect changed = m_painted;
    const QSize pixels = device_size(logical, dpr);
    if (m_image.size() != pixels || !qFuzzyCompare(m_image.devicePixelRatio(), dpr)) {
        m_image = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        m_image.setDevicePixelRatio(dpr);
        changed = m_painted = m_image.rect();
    }
    clear(m_painted);
    m_painted = {};
    if (!tool || m_image.isNull())
        return changed;
    QPainter painter(&m_image);
    painter.scale(scale, scale);
    tool->paint(painter);
    painter.end();
    m_painted = painted_rect(m_image);
    return changed | m_painted;
}

} // namespace tarn
