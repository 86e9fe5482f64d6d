#include "dxut_combo_box.h"

#include "dxut_dialog.h"
#include "gui_core.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int most_rows = 8; ///< of the list that drops down

} // namespace

CDXUTComboBox::CDXUTComboBox(tarn::Journal& journal, CGuiCore& core)
    : CDXUTItems(journal, core, new tarn::ComboBoxState)
{
}

QRectF CDXUTComboBox::popup_rect() const
{
    if (!m_dropped || GetSize() == 0)
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

void CDXUTComboBox::set_dropped(bool dropped)
{
    if (dropped == m_dropped)
        return;
    const QRectF before = popup_rect();
    m_dropped = dropped;
    m_first = std::clamp(GetSelectedIndex(), 0, std::max(0, GetSize() - most_rows));
    const QRectF touched = before.united(popup_rect()).adjusted(-4, -4, 4, 4);
    core().add_damage(dialog()->to_screen(touched));
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
    if (const int row = row_at(area, in_client - area.topLeft()); row >= 0)
        choose(row);
    set_dropped(false);
}

bool CDXUTComboBox::wheel_turned(double steps)
{
    if (m_dropped) {
        scroll_to(m_first - int(std::lround(steps)), popup_rect());
        core().add_damage(dialog()->to_screen(popup_rect()));
    } else if (GetSize() > 0) {
        choose(std::clamp(GetSelectedIndex() - int(std::lround(steps)), 0, GetSize() - 1));
    }
    return true;
}

bool CDXUTComboBox::key_pressed(int key, Qt::KeyboardModifiers modifiers)
{
    if (key != Qt::Key_Space && key != Qt::Key_Return && key != Qt::Key_Enter)
        return CDXUTItems::key_pressed(key, modifiers);
    set_dropped(!m_dropped);
    return true;
}

void CDXUTComboBox::user_chose(bool changed)
{
    if (m_dropped)
        core().add_damage(dialog()->to_screen(popup_rect()));
    if (changed)
        raise(EVENT_COMBOBOX_SELECTION_CHANGED);
}
