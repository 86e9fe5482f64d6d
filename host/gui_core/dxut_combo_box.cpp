#include "dxut_combo_box.h"

#include "dxut_dialog.h"
#include "gui_core.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int most_rows = 8;       ///< of the list that drops down
constexpr double panel_margin = 4; ///< pixels of the panel around the rows

} // namespace

QRectF CDXUTComboBox::popup_rect() const
{
    if (!m_dropped || GetSize() == 0 || !can_be_reached())
        return {};
    // The list stays upright to be read, whichever way the box is turned.
    const QRectF box = bounds();
    const QSizeF size(rect().width(), row_height * std::min(GetSize(), most_rows));
    const double left = is_rotated() ? box.center().x() - size.width() / 2 : box.x();
    const QRectF below(QPointF(left, box.bottom()), size);
    // Where the screen ends the list opens upwards.
    if (dialog()->to_screen(below).bottom() > core().screen_size().height())
        return QRectF(QPointF(left, box.top() - size.height()), size);
    return below;
}

QRectF CDXUTComboBox::raised_area() const
{
    const QRectF rows = popup_rect();
    return rows.isEmpty() ? rows : rows.adjusted(-panel_margin, -panel_margin, panel_margin, panel_margin);
}

/// A list without entries does not drop down.
void CDXUTComboBox::set_dropped(bool dropped)
{
    if (dropped == m_dropped || (dropped && GetSize() == 0))
        return;
    redraw();
    m_dropped = dropped;
    m_scrolling = false;
    m_hot = -1;
    m_first = std::clamp(GetSelectedIndex(), 0, std::max(0, GetSize() - most_rows));
    redraw();
    core().set_popup(dropped ? this : nullptr);
}

void CDXUTComboBox::reset_run_state()
{
    m_dropped = false; // A script may have removed the box while its list was down.
    CDXUTItems::reset_run_state();
}

void CDXUTComboBox::popup_pressed(QPointF in_client)
{
    const QRectF area = popup_rect();
    m_scrolling = press_scroll_bar(area, in_client - area.topLeft());
    popup_moved(in_client);
}

void CDXUTComboBox::popup_moved(QPointF in_client)
{
    const QRectF area = popup_rect();
    m_mouse = in_client;
    if (m_scrolling)
        drag_scroll_bar(area, in_client - area.topLeft());
    m_hot = m_scrolling ? -1 : row_at(area, in_client - area.topLeft());
    redraw();
}

/// The entry under the mouse is chosen, also when the mouse went down on the box itself.
void CDXUTComboBox::popup_released(QPointF in_client)
{
    const bool scrolled = std::exchange(m_scrolling, false);
    const QRectF area = popup_rect();
    const int row = scrolled ? -1 : row_at(area, in_client - area.topLeft());
    if (row < 0)
        return;
    set_dropped(false);
    choose(row);
}

bool CDXUTComboBox::wheel_turned(double steps)
{
    if (m_dropped) {
        scroll_to(m_first - int(std::lround(steps)), popup_rect());
        popup_moved(m_mouse);
    } else if (GetSize() > 0) {
        choose(std::clamp(GetSelectedIndex() - int(std::lround(steps)), 0, GetSize() - 1));
    }
    return true;
}

bool CDXUTComboBox::key_pressed(int key, Qt::KeyboardModifiers modifiers)
{
    if (key == Qt::Key_Space && is_typing())
        return true; // It belongs to what is typed.
    if (key != Qt::Key_Space && key != Qt::Key_Return && key != Qt::Key_Enter)
        return CDXUTItems::key_pressed(key, modifiers);
    set_dropped(!m_dropped);
    return true;
}

void CDXUTComboBox::user_chose(bool changed)
{
    redraw();
    if (changed)
        raise(EVENT_COMBOBOX_SELECTION_CHANGED);
}
