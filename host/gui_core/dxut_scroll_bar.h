#pragma once

#include "dxut_control.h"
#include "scroll_geometry.h"

#include <algorithm>

/// A scroll bar; it lies when it is wider than high and stands otherwise.
class CDXUTScrollBar : public CDXUTControl {
public:
    using CDXUTControl::CDXUTControl;

    int min() const { return state<tarn::ScrollBarState>().min; }
    int max() const { return state<tarn::ScrollBarState>().max; }
    int position() const { return state<tarn::ScrollBarState>().position; }

    bool lies() const { return rect().width() > rect().height(); }
    tarn::ScrollGeometry geometry() const;

    tarn::VisualState visual_state() const override { return dragged_state(); }
    bool is_interactive() const override { return true; }
    void mouse_pressed(QPointF inside) override;
    void mouse_dragged(QPointF inside) override;
    bool wheel_turned(double steps) override;
    bool key_pressed(int key, Qt::KeyboardModifiers modifiers) override;

private:
    bool scroll_to(double position);
    int step() const { return std::max(1, state<tarn::ScrollBarState>().page_size / 3); }
    double along(QPointF inside) const { return lies() ? inside.x() : inside.y(); }

    double m_grip = 0; ///< pixels from the thumb's beginning to the mouse while it is dragged
};
