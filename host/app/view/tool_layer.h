#pragma once

#include "screen_placing.h"

#include <QImage>
#include <QRect>

namespace tarn {

class MouseTool;

/// What the mouse tool paints over a view, as a picture. Tools do not say what they change, so it is painted for
/// every frame; what reaches the graphics card is only the part where something stands or stood.
class ToolLayer {
public:
    /// Paints the tool (null: nothing) and answers the device pixels that may differ from those before. `placing` tells
    /// where the screen is shown.
    QRect update(MouseTool* tool, QSize logical, double dpr, const ScreenPlacing& placing = {});

    const QImage& image() const { return m_image; }

private:
    void clear(const QRect& part);

    QImage m_image;
    QRect m_painted;
};

} // namespace tarn
