#pragma once

#include "element_cache.h"

#include <QPointF>
#include <QRectF>
#include <QString>

#include <optional>

class QImage;
class QPainter;
class CDXUTControl;
class CDXUTDialog;
class CGuiCore;

namespace tarn {

struct ElementLook;

/// Finds what is drawn at a place, instead of drawing elements.
struct ElementProbe {
    QPointF place; ///< pixels of the screen
    std::optional<Element> found{};
};

/// What a control needs to draw itself.
struct DrawContext {
    QPainter& painter;
    ElementCache& elements;
    const CGuiCore& core;
    double scale;                          ///< device pixels for one pixel of the interface
    bool editing = true;                   ///< place-holders for what is missing are drawn
    const CDXUTControl* control = nullptr; ///< the one that is drawn; null for a dialog
    const CDXUTDialog* active = nullptr;   ///< the dialog that looks active; null for none
    ElementProbe* probe = nullptr;         ///< who only wants to know what would be drawn; null draws

    /// The control's choice, or the style's, for the state that the control is in. What is drawn of a dialog is in
    /// `state` itself.
    void draw_element(Element element, VisualState state, const QRectF& area) const;
    /// With a look that was found already.
    void draw_element(Element element, VisualState state, const QRectF& area, const ElementLook& look) const;
    /// Draws a part of a picture into `area`, faint where the control is disabled.
    void draw_image(const QRectF& area, const QImage& image, const QRectF& part) const;
    /// Draws one of the scene's pictures scaled into `area`; false when there is no such picture.
    bool draw_picture(const QString& name, const QRectF& area) const;

    /// The same for another painter.
    DrawContext onto(QPainter& other) const { return {other, elements, core, scale, editing, control, active, probe}; }
    /// Whether the author chose a picture for the element.
    bool has_own_picture(Element element) const;

private:
    /// `own` is the state for which the control's own choices count.
    ElementLook look_of(Element element, VisualState state, VisualState own) const;
    QImage own_picture(const ElementLook& look, QSizeF size) const; ///< null where the style's is drawn
    bool is_disabled() const;
    QImage texture(const QString& name, QSizeF size) const; ///< with pixels enough for that size
};

} // namespace tarn
