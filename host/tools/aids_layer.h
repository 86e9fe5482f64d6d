#pragma once

#include "engine/mouse_tool.h"
#include "ruler_painter.h"

#include <QPointF>

#include <optional>

class CGuiCore;

namespace tarn {

/// A guide line of the author. A vertical one stands at an x, a horizontal one at a y.
struct Guide {
    Qt::Orientation lines = Qt::Vertical;
    std::optional<quint32> place; ///< pixels of the screen; none while it is dragged out of a ruler for the first time
};

/// What lies over a view while the interface is edited: the guide lines and, at the edges, the rulers. Shown as far as
/// the core's view aids are switched on.
class AidsLayer {
public:
    explicit AidsLayer(const CGuiCore& core) : m_core(core) {}

    /// The mouse did something in a view, whatever the tool makes of it.
    void follow(const MouseEvent& event);
    /// A pixel of the view in which the mouse was last, in pixels of the screen.
    double pixel() const { return m_pixel; }

    /// What things snap to where nothing else is near.
    struct Grid {
        int step = 8; ///< pixels of the dialog or the screen
        bool shown = false;
    };
    Grid& grid() { return m_grid; }
    const Grid& grid() const { return m_grid; }

    // What rulers and read-outs count in
    RulerScale x_scale() const;
    RulerScale y_scale() const;
    /// "X 10  Y 20" of a place of the screen.
    QString place_text(QPointF on_screen) const;
    bool shows_rulers() const;

    // Guide lines
    bool shows_guides() const;
    bool on_ruler(QPointF place) const;
    /// The new guide line that a drag from `place`, on a ruler, brings out; none in the corner and elsewhere.
    std::optional<Guide> guide_from_ruler(QPointF place) const;
    /// Whether a guide line that is let go at `place` has its end there: on its own ruler or out of the view.
    bool drops_guide(Qt::Orientation lines, QPointF place) const;
    /// The guide line that the mouse reaches at `place`.
    std::optional<Guide> guide_at(QPointF place) const;
    /// The guide line that a drag shows in another place; none when no one does.
    void set_dragged(std::optional<Guide> guide) { m_dragged = guide; }

    /// Below what the tools paint, and above it.
    void paint_guides(QPainter& painter) const;
    void paint_grid(QPainter& painter) const;
    void paint_rulers(QPainter& painter);

private:
    bool on_strip(Qt::Orientation lines, QPointF place) const;

    const CGuiCore& m_core;
    QPointF m_mouse{-1, -1};
    double m_pixel = 1;
    QPointF m_corner; ///< of the view, a place of the screen
    std::optional<Guide> m_dragged;
    Grid m_grid;
    RulerPainter m_rulers;
};

void paint_guide(QPainter& painter, Qt::Orientation lines, double place);

} // namespace tarn
