#include "dxut_scroll_bar.h"

#include <algorithm>
#include <cmath>

using tarn::ScrollBarState;

tarn::ScrollGeometry CDXUTScrollBar::geometry() const
{
    const double page = state<ScrollBarState>().page_size;
    return {.track = lies() ? rect().width() : rect().height(), .total = double(max()) - min() + page, .seen = page};
}

void CDXUTScrollBar::mouse_pressed(QPointF inside)
{
    const tarn::ScrollGeometry track = geometry();
    const double thumb = track.place_of(position() - double(min()));
    const double place = along(inside);
    m_grip = place - thumb;
    if (m_grip >= 0 && m_grip < track.thumb())
        return;
    // Beside the thumb a press turns a page towards the mouse.
    m_grip = track.thumb() / 2;
    const int page = state<ScrollBarState>().page_size;
    scroll_to(position() + (place < thumb ? -1.0 : 1.0) * page);
}

void CDXUTScrollBar::mouse_dragged(QPointF inside)
{
    scroll_to(min() + geometry().position_at(along(inside) - m_grip));
}

bool CDXUTScrollBar::wheel_turned(double steps)
{
    return scroll_to(position() - steps * step());
}

bool CDXUTScrollBar::key_pressed(int key, Qt::KeyboardModifiers)
{
    const double page = state<ScrollBarState>().page_size;
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Up: scroll_to(position() - double(step())); break;
    case Qt::Key_Right:
    case Qt::Key_Down: scroll_to(position() + double(step())); break;
    case Qt::Key_PageUp: scroll_to(position() - page); break;
    case Qt::Key_PageDown: scroll_to(position() + page); break;
    case Qt::Key_Home: scroll_to(min()); break;
    case Qt::Key_End: scroll_to(max()); break;
    default: return false;
    }
    return true;
}

/// The user moves the thumb; answers whether it moved.
bool CDXUTScrollBar::scroll_to(double position)
{
    const double within = std::clamp(position, double(min()), double(max()));
    const bool moved = change<&ScrollBarState::position>(int(std::lround(within)));
    if (moved)
        raise(EVENT_SCROLLBAR_CHANGED);
    return moved;
}
