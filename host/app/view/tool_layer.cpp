#include "tool_layer.h"

#include "core/painted_rect.h"
#include "engine/mouse_tool.h"
#include "overlay_buffer.h"

#include <QPainter>

#include <cstring>

namespace tarn {

void ToolLayer::clear(const QRect& part)
{
    for (int y = part.top(); y <= part.bottom(); ++y)
        std::memset(m_image.scanLine(y) + part.x() * 4, 0, std::size_t(part.width()) * 4);
}

QRect ToolLayer::update(MouseTool* tool, QSize logical, double dpr, const ScreenPlacing& placing)
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
    painter.setTransform(placing.transform());
    tool->paint(painter);
    painter.end();
    m_painted = painted_rect(m_image);
    return changed | m_painted;
}

} // namespace tarn
