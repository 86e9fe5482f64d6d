#pragma once

#include "dxut_control.h"

/// A thumb on a track that is dragged between two values. It lies with the lower one on the left, or stands with that at
/// the bottom when it is higher than wide.
class CDXUTSlider : public CDXUTControl {
public:
    using CDXUTControl::CDXUTControl;

    int min() const { return state<tarn::SliderState>().min; }
    int max() const { return state<tarn::SliderState>().max; }
    int value() const { return state<tarn::SliderState>().value; }

    double thumb_side() const;
    bool stands() const { return rect().height() > rect().width(); }

    tarn::VisualState visual_state() const override { return dragged_state(); }
    bool is_interactive() const override { return true; }
    void mouse_pressed(QPointF inside) override { mouse_dragged(inside); }
    void mouse_dragged(QPointF inside) override;
    bool wheel_turned(double steps) override;
    bool key_pressed(int key, Qt::KeyboardModifiers modifiers) override;

private:
    void drag_to(double value);
};
