#pragma once

#include "element_cache.h"
#include "skin.h"

#include <QRectF>
#include <QString>

class QImage;
class QPainter;
class CDXUTControl;
class CGuiCore;

namespace tarn {

struct ElementLook;

/// What a control needs to draw itself.
struct DrawContext {
    QPainter& painter;
    ElementCache& elements;
    const CGuiCore& core;
    double scale;                         ///< device pixels for one pixel of the interface
    bool editing = true;                  ///< place-holders for what is missing are drawn
    const CDXUTControl* styled = nullptr; ///< the control that is drawn, when it may differ from the style

    void draw_element(Element element, VisualState state, const QRectF& area) const;
    /// With a look that was found already.
    void draw_element(Element element, VisualState state, const QRectF& area, const ElementLook& look) const;
    /// Draws one of the scene's pictures scaled into `area`; false when there is no such picture.
    bool draw_picture(const QString& name, const QRectF& area) const;

private:
    ElementChoice choice_of(const ElementLook& look, QSizeF size) const;
    QImage texture(const QString& name, QSizeF size) const; ///< with pixels enough for that size
};

} // namespace tarn
