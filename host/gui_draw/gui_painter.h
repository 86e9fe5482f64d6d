#pragma once

#include "element_cache.h"

#include <QRectF>

class QPainter;
class CGuiCore;
class CDXUTControl;

namespace tarn {

/// Draws an interface. The same code serves the view, previews and test pictures.
class GuiPainter {
public:
    /// Draws what lies in `clip` (pixels of the screen) with a painter whose logical pixels are the screen's. `scale` is
    /// the number of device pixels for one of them.
    void paint(QPainter& painter, const CGuiCore& core, const QRectF& clip, double scale);

private:
    void paint_raised(QPainter& painter, const CGuiCore& core, const CDXUTControl& control, double scale);

    ElementCache m_elements;
};

} // namespace tarn
