#include "dxut_list_box.h"

#include <cmath>

namespace {

constexpr double margin = 4; ///< pixels between the frame and the rows

} // namespace

QRectF CDXUTListBox::rows(const QRectF& area) const
{
    return area.adjusted(margin, margin, -margin, -margin);
}

void CDXUTListBox::mouse_pressed(QPointF inside)
{
    const QRectF area = rows(rect());
    const QPointF place = inside - QPointF(margin, margin);
    m_scrolling = press_scroll_bar(area, place);
    if (m_scrolling)
        return;
    if (const int row = row_at(area, place); row >= 0)
        choose(row);
}

void CDXUTListBox::mouse_dragged(QPointF inside)
{
    if (m_scrolling)
        drag_scroll_bar(rows(rect()), inside - QPointF(margin, margin));
}

bool CDXUTListBox::wheel_turned(double steps)
{
    scroll_to(m_first - int(std::lround(steps * 3)), rows(rect()));
    return true;
}

void CDXUTListBox::double_clicked(QPointF inside)
{
    if (!m_scrolling && row_at(rows(rect()), inside - QPointF(margin, margin)) >= 0)
        raise(EVENT_LISTBOX_DOUBLE_CLICKED);
}
