#include "dxut_items.h"

#include <algorithm>
#include <cmath>

using tarn::ItemsState;

void CDXUTItems::AddItem(const QString& text)
{
    constexpr tarn::FieldKey key = tarn::key<&ItemsState::items>;
    edit<ItemsState>().items.append(tarn::cut_text(text, fields().find(key)->rules().max_length));
    written(key);
}

bool CDXUTItems::RemoveItem(int index)
{
    if (index < 0 || index >= GetSize())
        return false;
    auto& s = edit<ItemsState>();
    s.items.removeAt(index);
    if (s.selected > index)
        --s.selected;
    written({tarn::key<&ItemsState::items>, tarn::key<&ItemsState::selected>});
    return true;
}

bool CDXUTItems::SelectItem(int index)
{
    return index >= -1 && index < GetSize() && change<&ItemsState::selected>(index);
}

void CDXUTItems::reset_run_state()
{
    m_first = 0;
    state_changed();
}

tarn::ScrollGeometry CDXUTItems::scroll(const QRectF& area) const
{
    return {.track = area.height(),
            .total = double(GetSize()),
            .seen = std::max(1.0, std::floor(area.height() / row_height))};
}

int CDXUTItems::row_at(const QRectF& area, QPointF inside) const
{
    const bool beside = !QRectF(QPointF(), area.size()).contains(inside)
        || (scroll(area).can_scroll() && inside.x() > area.width() - scroll_width);
    const int row = m_first + int(inside.y() / row_height);
    return beside || row >= GetSize() ? -1 : row;
}

void CDXUTItems::scroll_to(int first, const QRectF& area)
{
    const int last = std::max(0, GetSize() - int(scroll(area).seen));
    m_first = std::clamp(first, 0, last);
    state_changed();
}

void CDXUTItems::choose(int index)
{
    const bool changed = SelectItem(index);
    const QRectF area = rows_area();
    const int seen = int(scroll(area).seen);
    if (index < m_first)
        scroll_to(index, area);
    else if (index >= m_first + seen)
        scroll_to(index - seen + 1, area);
    user_chose(changed);
}

bool CDXUTItems::key_pressed(int key, Qt::KeyboardModifiers)
{
    const int last = GetSize() - 1;
    const int page = int(scroll(rows_area()).seen);
    int index = GetSelectedIndex();
    switch (key) {
    case Qt::Key_Up: index -= 1; break;
    case Qt::Key_Down: index += 1; break;
    case Qt::Key_PageUp: index -= page; break;
    case Qt::Key_PageDown: index += page; break;
    case Qt::Key_Home: index = 0; break;
    case Qt::Key_End: index = last; break;
    default: return false;
    }
    if (last >= 0)
        choose(std::clamp(index, 0, last));
    return true;
}
