#include "control_drawing.h"
#include "draw_context.h"
#include "draw_functions.h"
#include "gui_core/dxut_combo_box.h"
#include "gui_core/dxut_list_box.h"
#include "gui_core/gui_core.h"
#include "gui_core/style_look.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <deque>

namespace tarn {

namespace {

constexpr double panel_radius = 5; ///< pixels

/// The texts of a list box or combo box.
struct ItemTexts : DrawCache {
    TextCache chosen; ///< in a combo box's body
    std::deque<TextCache> rows;
};

TextLook text_look(const CDXUTItems& items)
{
    TextLook look = style_text_look(items.core().look(), items.GetType());
    look.color = text_color_in(items, items.visual_state(), 0);
    look.vertical_align = 1;
    if (!items.font_family().isEmpty())
        look.family = items.font_family();
    look.italic = look.italic || items.font_italic();
    return look;
}

/// The rows that fit into `area`, from the first one that is seen on, with a scroll bar when there are more.
void draw_rows(DrawContext& context, const CDXUTItems& items, const QRectF& area, int hot_row = -1)
{
    constexpr double row_height = CDXUTItems::row_height;
    constexpr double scroll_width = CDXUTItems::scroll_width;
    const int first = items.first_row();
    const ScrollGeometry bar = items.scroll(area);
    const double width = area.width() - (bar.can_scroll() ? scroll_width : 0);
    const int count = std::min(items.GetSize() - first, int(std::ceil(area.height() / row_height)));
    auto& texts = kept_in<ItemTexts>(items.draw_slot()).rows;
    texts.resize(std::size_t(std::max(0, count)));
    const TextLook look = text_look(items);
    context.painter.save();
    context.painter.setClipRect(area, Qt::IntersectClip);
    for (int i = 0; i < count; ++i) {
        const int row = first + i;
        const QRectF place(area.x(), area.y() + i * row_height, width, row_height);
        if (row == hot_row)
            context.draw_element(Element::SelectedRow, VisualState::Hover, place);
        else if (row == items.GetSelectedIndex())
            context.draw_element(Element::SelectedRow, VisualState::Normal, place);
        texts[std::size_t(i)].draw(context.painter, place.adjusted(6, 0, -4, 0), items.items()[row], look);
    }
    context.painter.restore();
    if (!bar.can_scroll())
        return;
    const QRectF track(area.right() - scroll_width, area.y(), scroll_width, area.height());
    context.draw_element(Element::ScrollTrack, VisualState::Normal, track);
    context.draw_element(Element::ScrollThumb, VisualState::Normal,
                         QRectF(track.x(), track.y() + bar.place_of(first), scroll_width, bar.thumb()));
}

} // namespace

void draw_combo_box(DrawContext& context, const CDXUTComboBox& combo_box, const QRectF& area)
{
    const VisualState look = combo_box.visual_state();
    const double side = std::min(area.height(), area.width());
    const QRectF arrow(area.right() - side, area.y(), side, area.height());
    context.draw_element(Element::ComboBox, look, area);
    context.draw_element(Element::DropArrow, look, arrow.adjusted(4, 4, -4, -4));
    kept_in<ItemTexts>(combo_box.draw_slot())
        .chosen.draw(context.painter, area.adjusted(8, 0, -side, 0), combo_box.GetSelectedItem(), text_look(combo_box));
}

void draw_combo_list(DrawContext& context, const CDXUTComboBox& combo_box)
{
    const QRectF area = combo_box.popup_rect();
    const QRectF panel = combo_box.raised_area().adjusted(1, 1, -1, -1);
    // The skin's panel lets the world through, and what lies below a list must not mix with it.
    if (!context.has_own_picture(Element::InfoPanel)) {
        context.painter.setPen(Qt::NoPen);
        const LookOwner& owner = *look_owner(DXUT_CONTROL_COMBOBOX);
        const int ground = int(owner.elements.size()) + 1;
        context.painter.setBrush(QColor::fromRgba(context.core.look().color(owner, ground, VisualState::Normal)));
        context.painter.drawRoundedRect(panel.adjusted(1, 1, -1, -1), panel_radius, panel_radius);
    }
    context.draw_element(Element::InfoPanel, VisualState::Normal, panel);
    draw_rows(context, combo_box, area, combo_box.hot_row());
}

void draw_list_box(DrawContext& context, const CDXUTListBox& list_box, const QRectF& area)
{
    context.draw_element(Element::Field, list_box.visual_state(), area);
    draw_rows(context, list_box, list_box.rows_area());
}

} // namespace tarn
