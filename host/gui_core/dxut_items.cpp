#include "dxut_items.h"

#include <algorithm>
#include <chrono>
#include <cmath>

using tarn::ItemsState;

namespace {

constexpr auto typing_pause = std::chrono::milliseconds(1000); ///< after which typing begins anew

} // namespace

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
    m_typing.reset();
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

bool CDXUTItems::press_scroll_bar(const QRectF& area, QPointF inside)
{
    if (!scroll(area).can_scroll() || inside.x() <= area.width() - scroll_width)
        return false;
    drag_scroll_bar(area, inside);
    return true;
}

void CDXUTItems::drag_scroll_bar(const QRectF& area, QPointF inside)
{
    const tarn::ScrollGeometry bar = scroll(area);
    scroll_to(int(std::lround(bar.position_at(inside.y() - bar.thumb() / 2))), area);
}

bool CDXUTItems::text_typed(const QString& text, const QString&)
{
    if (!is_typing())
        m_typing = std::make_unique<Typing>();
    m_typing->text += text;
    m_typing->pause.setRemainingTime(typing_pause);
    const QString typed = m_typing->text;
    if (typed.trimmed().isEmpty()) {
        m_typing.reset();
        return false;
    }
    const bool first = typed.size() == text.size();
    int found = find_prefix(typed, GetSelectedIndex() + (first ? 1 : 0));
    // One letter again and again goes through the items that begin with it.
    if (found < 0 && typed.count(typed.front(), Qt::CaseInsensitive) == typed.size())
        found = find_prefix(typed.left(1), GetSelectedIndex() + 1);
    if (found >= 0)
        choose(found);
    return true;
}

/// The first item from `from` on, round the end, that begins so; -1 for none.
int CDXUTItems::find_prefix(const QString& prefix, int from) const
{
    from = std::max(0, from);
    for (int i = 0; i < GetSize(); ++i)
        if (const int index = (from + i) % GetSize(); GetItem(index).startsWith(prefix, Qt::CaseInsensitive))
            return index;
    return -1;
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
