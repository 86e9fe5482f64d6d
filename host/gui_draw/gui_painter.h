#pragma once

#include "element_cache.h"

#include <QRectF>

class QPainter;
class CGuiCore;
class CDXUTControl;
class CDXUTDialog;

namespace tarn {

/// Draws an interface. The same code serves the view, previews and test pictures.
class GuiPainter {
public:
    GuiPainter();

    /// Draws what lies in `clip` (pixels of the screen) with a painter whose logical pixels are the screen's. `scale` is
    /// the number of device pixels for one of them.
    void paint(QPainter& painter, const CGuiCore& core, const QRectF& clip, double scale);
    /// Draws one dialog alone, with what its controls show above all others; its outer corner becomes the painter's origin.
    void paint_alone(QPainter& painter, const CGuiCore& core, const CDXUTDialog& dialog, double scale);

private:
    void paint_one(QPainter& painter, const CGuiCore& core, const CDXUTDialog& dialog, const QRectF& clip,
                   double scale);
    /// What controls of a dialog show above all others; of all dialogs on the screen for null.
    void paint_raised(QPainter& painter, const CGuiCore& core, const CDXUTDialog* dialog, double scale);
    void paint_raised(QPainter& painter, const CGuiCore& core, const CDXUTControl& control, double scale);

    ElementCache m_elements;
};

} // namespace tarn
