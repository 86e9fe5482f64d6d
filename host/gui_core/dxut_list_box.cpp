#include "dxut_list_box.h"

#include <cmath>

namespace {

constexpr double margin = 4; ///< pixels between the frame and the rows

} // namespace

CDXUTListBox::CDXUTListBox(tarn::Journal& journal, CGuiCore& core) : CDXUTItems(journal, core, new tarn::ListBoxState)
{
}

QRectF CDXUTListBox::rows(const QRectF& area) const
{
    return area.adjusted(margin, margin, -margin, -margin);
}

void CDXUTListBox::mouse_pressed(QPointF inside)
{
    const QRectF area = rows(rect());
    const QPointF place = inside - QPointF(margin, margin);
    m_scrolling = scroll(area).can_scroll() && place.x() > area.width() - scroll_width;
    if (m_scrolling)
        mouse_dragged(inside);
    else if (const int row = row_at(area, place); row >= 0)
        choose(row);
}

void CDXUTListBox::mouse_dragged(QPointF inside)
{
    if (!m_scrolling)
        return;
    const QRectF area = rows(rect());
    const tarn::ScrollGeometry bar = scroll(area);
    scroll_to(int(std::lround(bar.position_at(inside.y() - margin - bar.thumb() / 2))), area);
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
