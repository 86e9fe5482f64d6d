#include "dxut_slider.h"

#include <algorithm>
#include <cmath>

using tarn::SliderState;

double CDXUTSlider::thumb_side() const
{
    return std::min(rect().height(), rect().width());
}

/// The user moves the thumb.
void CDXUTSlider::drag_to(double value)
{
    if (change<&SliderState::value>(int(std::lround(std::clamp(value, double(min()), double(max()))))))
        raise(EVENT_SLIDER_DRAGGED);
}

void CDXUTSlider::mouse_dragged(QPointF inside)
{
    const double side = thumb_side();
    const double way = std::max(rect().width(), rect().height()) - side;
    if (way <= 0)
        return;
    const double place = stands() ? rect().height() - inside.y() : inside.x();
    const double share = std::clamp((place - side / 2) / way, 0.0, 1.0);
    drag_to(min() + share * (double(max()) - min()));
}

bool CDXUTSlider::wheel_turned(double steps)
{
    const double step = std::max(1.0, (double(max()) - min()) / 20);
    drag_to(value() + steps * step);
    return true;
}

bool CDXUTSlider::key_pressed(int key, Qt::KeyboardModifiers)
{
    const double page = std::max(1.0, (double(max()) - min()) / 10);
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Down: drag_to(value() - 1.0); break;
    case Qt::Key_Right:
    case Qt::Key_Up: drag_to(value() + 1.0); break;
    case Qt::Key_PageDown: drag_to(value() - page); break;
    case Qt::Key_PageUp: drag_to(value() + page); break;
    case Qt::Key_Home: drag_to(min()); break;
    case Qt::Key_End: drag_to(max()); break;
    default: return false;
    }
    return true;
}
