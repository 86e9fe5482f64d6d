#include "open_menu.h"

#include "dxut_menu.h"
#include "dxut_menu_item.h"
#include "gui_core.h"

#include <QPolygonF>

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr double overlap = 3; ///< pixels by which a submenu lies over the list that it opens from
constexpr double rim = 10;    ///< pixels around a list that are drawn for it, its shadow among them

} // namespace

QRectF OpenMenu::Panel::row_area(int row) const
{
    return list.rows[std::size_t(row)].area.translated(area.x(), area.y() - scrolled);
}

OpenMenu::OpenMenu(CGuiCore& core, CDXUTMenu& menu, ModelObject* owner, QPointF place)
    : m_core(core), m_menu(menu), m_corner(place), m_mouse(place)
{
    if (owner)
        m_owner = owner->weak_from_this();
    open_panel(-1, place, QRectF(place, place));
}

QRectF OpenMenu::bounds() const
{
    QRectF all;
    for (const Panel& panel : m_panels)
        all |= panel.area;
    return all.adjusted(-rim, -rim, rim, rim);
}

void OpenMenu::redraw() const
{
    m_core.add_damage(bounds());
}

CDXUTMenuItem& OpenMenu::item_of(const Panel& panel, int row) const
{
    return *m_menu.items()[panel.list.rows[std::size_t(row)].item];
}

bool OpenMenu::can_be_chosen(const Panel& panel, int row) const
{
    return row >= 0 && item_of(panel, row).can_be_chosen();
}

/// The topmost panel there; -1 for none.
int OpenMenu::panel_at(QPointF place) const
{
    const auto found = std::find_if(m_panels.rbegin(), m_panels.rend(),
                                    [place](const Panel& panel) { return panel.area.contains(place); });
    return int(m_panels.rend() - found) - 1;
}

/// -1 for none.
int OpenMenu::row_at(const Panel& panel, QPointF place)
{
    return panel.list.row_at(place - panel.area.topLeft() + QPointF(0, panel.scrolled));
}

CDXUTMenuItem* OpenMenu::item_at(QPointF place) const
{
    const int found = panel_at(place);
    const Panel* panel = found < 0 ? nullptr : &m_panels[std::size_t(found)];
    const int row = panel ? row_at(*panel, place) : -1;
    return row < 0 ? nullptr : &item_of(*panel, row);
}

void OpenMenu::open_panel(int opener, QPointF corner, const QRectF& avoided)
{
    MenuList list = menu_list(m_menu, opener);
    const QRectF area = placed_list(list.size, corner, avoided, QSizeF(m_core.screen_size()));
    m_panels.push_back({.list = std::move(list), .area = area});
    redraw();
}

/// Of the highlighted row of the last panel.
void OpenMenu::open_submenu(bool highlight_first)
{
    const Panel& last = m_panels.back();
    const MenuRow& row = last.list.rows[std::size_t(last.highlighted)];
    const int padding = m_menu.menu_state().padding;
    const QRectF beside = last.row_area(last.highlighted).adjusted(-padding + overlap, 0, padding - overlap, padding);
    open_panel(row.item, beside.topRight() - QPointF(0, padding), beside);
    if (highlight_first)
        step(-1, 1);
}

void OpenMenu::close_from(std::size_t panel)
{
    if (panel >= m_panels.size())
        return;
    redraw();
    m_panels.erase(m_panels.begin() + std::ptrdiff_t(panel), m_panels.end());
}

void OpenMenu::highlight(std::size_t panel, int row)
{
    Panel& chosen = m_panels[panel];
    if (chosen.highlighted == row)
        return;
    close_from(panel + 1);
    chosen.highlighted = row;
    redraw();
}

/// Whether the mouse is on its way from the highlighted row to the submenu, over rows between them.
bool OpenMenu::heads_for_submenu(QPointF place) const
{
    if (m_panels.size() < 2)
        return false;
    const QRectF& parent = m_panels[m_panels.size() - 2].area;
    const QRectF& child = m_panels.back().area;
    const bool on_right = child.center().x() > parent.center().x();
    const double side = on_right ? child.left() : child.right();
    if (on_right ? place.x() <= m_mouse.x() : place.x() >= m_mouse.x())
        return false;
    const QPolygonF way({m_mouse, QPointF(side, child.top()), QPointF(side, child.bottom())});
    return way.containsPoint(place, Qt::OddEvenFill);
}

void OpenMenu::mouse_moved(QPointF place)
{
    const int found = panel_at(place);
    const bool on_the_way = found == int(m_panels.size()) - 2 && heads_for_submenu(place);
    m_mouse = place;
    if (on_the_way)
        return;
    if (found < 0) {
        if (m_panels.back().highlighted >= 0)
            highlight(m_panels.size() - 1, -1);
        return;
    }
    const auto panel = std::size_t(found);
    const int row = row_at(m_panels[panel], place);
    highlight(panel, can_be_chosen(m_panels[panel], row) ? row : -1);
    if (m_panels.size() > panel + 2) // A submenu of the submenu that the mouse left.
        close_from(panel + 2);
    if (m_panels.size() == panel + 1 && m_panels[panel].highlighted >= 0
        && m_panels[panel].list.rows[std::size_t(row)].opens_submenu)
        open_submenu(false);
}

/// An item with a submenu opens that.
CDXUTMenuItem* OpenMenu::choose(std::size_t panel, int row, bool by_key)
{
    if (!can_be_chosen(m_panels[panel], row))
        return nullptr;
    if (!m_panels[panel].list.rows[std::size_t(row)].opens_submenu)
        return &item_of(m_panels[panel], row);
    highlight(panel, row);
    if (m_panels.size() == panel + 1)
        open_submenu(by_key);
    return nullptr;
}

CDXUTMenuItem* OpenMenu::mouse_released(QPointF place)
{
    const int found = panel_at(place);
    if (found < 0)
        return nullptr;
    const Panel& panel = m_panels[std::size_t(found)];
    return choose(std::size_t(found), row_at(panel, place), false);
}

void OpenMenu::scroll(Panel& panel, double to)
{
    to = std::clamp(to, 0.0, std::max(0.0, panel.list.size.height() - panel.area.height()));
    if (panel.scrolled == to)
        return;
    panel.scrolled = to;
    redraw();
}

void OpenMenu::show_row(Panel& panel, int row)
{
    const QRectF& area = panel.list.rows[std::size_t(row)].area;
    const int padding = m_menu.menu_state().padding;
    const double top = area.top() - padding;
    const double bottom = area.bottom() + padding - panel.area.height();
    scroll(panel, std::clamp(panel.scrolled, std::min(top, bottom), std::max(top, bottom)));
}

void OpenMenu::wheel_turned(QPointF place, double steps)
{
    const int found = panel_at(place);
    if (found < 0)
        return;
    close_from(std::size_t(found) + 1); // It would not move with the row that it opens from.
    Panel& panel = m_panels[std::size_t(found)];
    scroll(panel, panel.scrolled - steps * m_menu.menu_state().item_height);
    mouse_moved(place);
}

/// To the next row of the last panel that can be chosen, behind `from` or before it; around the end.
void OpenMenu::step(int from, int by)
{
    Panel& panel = m_panels.back();
    const int count = int(panel.list.rows.size());
    if (from < 0 && by < 0)
        from = count;
    for (int tried = 1; tried <= count; ++tried) {
        const int row = ((from + by * tried) % count + count) % count;
        if (!can_be_chosen(panel, row))
            continue;
        highlight(m_panels.size() - 1, row);
        show_row(panel, row);
        return;
    }
}

OpenMenu::Answer OpenMenu::key_pressed(int key)
{
    const std::size_t last = m_panels.size() - 1;
    const int row = m_panels[last].highlighted;
    switch (key) {
    case Qt::Key_Down:
    case Qt::Key_Tab: step(row, 1); break;
    case Qt::Key_Up:
    case Qt::Key_Backtab: step(row, -1); break;
    case Qt::Key_Home: step(-1, 1); break;
    case Qt::Key_End: step(-1, -1); break;
    case Qt::Key_Right:
        if (row >= 0 && m_panels[last].list.rows[std::size_t(row)].opens_submenu)
            open_submenu(true);
        break;
    case Qt::Key_Left:
        if (last > 0)
            close_from(last);
        break;
    case Qt::Key_Escape:
        if (last == 0)
            return {.closes = true};
        close_from(last);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        CDXUTMenuItem* const chosen = choose(last, row, true);
        return {.chosen = chosen, .closes = chosen != nullptr};
    }
    default: break;
    }
    return {};
}

void OpenMenu::text_typed(const QString& text)
{
    if (text.isEmpty())
        return;
    const Panel& panel = m_panels.back();
    const int count = int(panel.list.rows.size());
    for (int tried = 1; tried <= count; ++tried) {
        const int row = (panel.highlighted + tried + count) % count;
        if (can_be_chosen(panel, row) && item_of(panel, row).item_state().text.startsWith(text, Qt::CaseInsensitive)) {
            highlight(m_panels.size() - 1, row);
            show_row(m_panels.back(), row);
            return;
        }
    }
}

void OpenMenu::follow_menu()
{
    redraw();
    const std::vector<Panel> before = std::exchange(m_panels, {});
    open_panel(-1, m_corner, QRectF(m_corner, m_corner));
    for (std::size_t i = 0; i < before.size(); ++i) {
        Panel& panel = m_panels.back();
        scroll(panel, before[i].scrolled);
        const int row = before[i].highlighted;
        if (row >= int(panel.list.rows.size()) || !can_be_chosen(panel, row))
            return;
        panel.highlighted = row;
        if (i + 1 == before.size() || !panel.list.rows[std::size_t(row)].opens_submenu)
            return;
        open_submenu(false);
    }
}

} // namespace tarn
