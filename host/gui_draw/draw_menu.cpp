#include "draw_context.h"
#include "draw_functions.h"
#include "faded_layer.h"
#include "gui_core/control_style.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "gui_core/gui_core.h"
#include "gui_core/menu_layout.h"
#include "gui_core/open_menu.h"
#include "gui_core/style_look.h"
#include "gui_core/transitions.h"
#include "kept_drawing.h"
#include "menu_drawing.h"
#include "texture_cache.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace tarn {

namespace {

constexpr double mark_side = 16;     ///< pixels of a check mark
constexpr double icon_margin = 4;    ///< pixels around an icon
constexpr double separator_edge = 8; ///< pixels beside a separator
constexpr int shortcut_alpha = 160;  ///< of 255: shortcuts stand back behind the texts
constexpr int shadow_reach = 7;      ///< pixels
constexpr double shadow_drop = 2;
constexpr double slide = 6; ///< pixels that a list comes down while it opens
constexpr quint32 white = 0xffffffff;
constexpr double corner_radius = 6;
constexpr double scroll_mark = 4; ///< pixels; half the width of the marks at the ends of a list that scrolls

struct ItemTexts : DrawCache {
    TextCache text;
    TextCache shortcut;
};

/// What all rows of a list share.
struct ListDrawing {
    const DrawContext& context;
    const CDXUTMenu& menu;
    const MenuList& list;
    QPointF corner; ///< of the list, scrolled

    const MenuState& look() const { return menu.menu_state(); }
    const StyleLook& style() const { return context.core.look(); }
    void draw_part(Element element, VisualState state, const QRectF& area) const
    {
        context.draw_element(element, state, area, element_look(style(), look(), element, state));
    }
    /// The part of the row that belongs to a column.
    static QRectF cell(const QRectF& row, const QRectF& column, QPointF corner)
    {
        return {corner.x() + column.x(), row.y(), column.width(), row.height()};
    }
};

quint32 text_color(const ListDrawing& drawing, VisualState state)
{
    if (const quint32 own = chosen_text_color(drawing.look(), state))
        return own;
    const quint32 usual = state == VisualState::Disabled ? 0 : chosen_text_color(drawing.look(), VisualState::Normal);
    return usual ? usual : drawing.style().text_color(look_owner_menu, state);
}

QRectF centred(const QRectF& cell, QSizeF size)
{
    return {cell.center() - QPointF(size.width() / 2, size.height() / 2), size};
}

void draw_separator(const ListDrawing& drawing, const QRectF& row)
{
    const QRectF line(row.x() + separator_edge, std::floor(row.center().y()), row.width() - 2 * separator_edge, 1);
    const ElementLook look = element_look(drawing.style(), drawing.look(), Element::White, VisualState::Normal);
    const quint32 color = look.color ? look.color : drawing.style().token(QStringLiteral("separator"));
    if (look.picture.isEmpty() && look.shades) // No author gave it a picture.
        drawing.context.painter.fillRect(line, QColor::fromRgba(color));
    else
        drawing.context.draw_element(Element::White, VisualState::Normal, row, look);
}

void draw_icon(const ListDrawing& drawing, const MenuItemState& item, const QRectF& cell, VisualState state)
{
    if (cell.width() <= 0)
        return;
    const double side = std::min(cell.width(), cell.height()) - 2 * icon_margin;
    if (item.checked)
        return drawing.draw_part(Element::CheckMark, state, centred(cell, {mark_side, mark_side}));
    const QSizeF picture = texture(drawing.context.core, item.icon).size();
    if (picture.isEmpty() || side <= 0)
        return;
    QPainter& painter = drawing.context.painter;
    painter.save();
    painter.setOpacity(painter.opacity() * (state == VisualState::Disabled ? 0.4 : 1));
    drawing.context.draw_picture(item.icon, centred(cell, picture.scaled(side, side, Qt::KeepAspectRatio)));
    painter.restore();
}

/// The skin's arrow points down.
void draw_arrow(const ListDrawing& drawing, const QRectF& cell, VisualState state)
{
    const QRectF area = centred(cell, {cell.width(), cell.width()});
    QPainter& painter = drawing.context.painter;
    painter.save();
    painter.translate(area.center());
    painter.rotate(-90);
    drawing.draw_part(Element::DropArrow, state, area.translated(-area.center()));
    painter.restore();
}

void draw_row(const ListDrawing& drawing, const MenuRow& row, bool highlighted)
{
    if (row.item >= drawing.menu.items().size())
        return; // The list was laid out before items went.
    const CDXUTMenuItem& item = *drawing.menu.items()[row.item];
    const MenuItemState& s = item.item_state();
    const QRectF area = row.area.translated(drawing.corner);
    if (s.separator)
        return draw_separator(drawing, area);
    const VisualState state = !s.enabled ? VisualState::Disabled
        : highlighted                    ? VisualState::Hover
                                         : VisualState::Normal;
    if (highlighted)
        drawing.draw_part(Element::SelectedRow, VisualState::Normal, area);
    const auto cell = [&](const QRectF& column) { return ListDrawing::cell(area, column, drawing.corner); };
    draw_icon(drawing, s, cell(drawing.list.icons), state);
    const MenuState& look = drawing.look();
    TextLook text = style_text_look(drawing.style(), look_owner_menu);
    text.color = text_color(drawing, state);
    text.vertical_align = 1;
    if (look.font_size)
        text.font_size = look.font_size;
    if (!look.font_family.isEmpty())
        text.family = look.font_family;
    text.bold = text.bold || look.bold;
    text.italic = text.italic || look.font_italic;
    auto& texts = kept_in<ItemTexts>(item.draw_slot());
    texts.text.draw(drawing.context.painter, cell(drawing.list.texts), s.text, text);
    if (!s.shortcut.isEmpty()) {
        const QRgb alpha = QRgb(qAlpha(text.color) * shortcut_alpha / 255) << 24;
        text.color = (text.color & 0xffffffu) | alpha;
        text.horizontal_align = 2;
        texts.shortcut.draw(drawing.context.painter, cell(drawing.list.shortcuts), s.shortcut, text);
    }
    if (row.opens_submenu)
        draw_arrow(drawing, cell(drawing.list.arrows), state);
}

void draw_shadow(QPainter& painter, const QRectF& area)
{
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 14));
    for (int reach = 1; reach <= shadow_reach; ++reach)
        painter.drawRoundedRect(area.translated(0, shadow_drop).adjusted(-reach, -reach, reach, reach),
                                corner_radius + reach, corner_radius + reach);
    painter.restore();
}

/// Small marks where a list goes on beyond its area.
void draw_scroll_marks(const ListDrawing& drawing, const QRectF& area, double scrolled)
{
    QPainter& painter = drawing.context.painter;
    const auto draw = [&](double y, double up) {
        const QPointF tip(area.center().x(), y - up * scroll_mark / 2);
        QPainterPath path(tip);
        path.lineTo(tip + QPointF(scroll_mark, up * scroll_mark));
        path.lineTo(tip + QPointF(-scroll_mark, up * scroll_mark));
        path.closeSubpath();
        painter.fillPath(path, QColor::fromRgba(text_color(drawing, VisualState::Normal)));
    };
    const double inset = scroll_mark + 1;
    if (scrolled > 0)
        draw(area.top() + inset, 1);
    if (scrolled + area.height() < drawing.list.size.height())
        draw(area.bottom() - inset, -1);
}

} // namespace

void draw_menu_list(const DrawContext& context, const CDXUTMenu& menu, const MenuList& list, const QRectF& area,
                    double scrolled, int highlighted)
{
    const ListDrawing drawing{context, menu, list, area.topLeft() - QPointF(0, scrolled)};
    drawing.draw_part(Element::Bubble, VisualState::Normal, area);
    context.painter.save();
    context.painter.setClipRect(area, Qt::IntersectClip);
    for (int row = 0; row < int(list.rows.size()); ++row) {
        const MenuRow& line = list.rows[std::size_t(row)];
        if (line.area.translated(drawing.corner).intersects(area))
            draw_row(drawing, line, row == highlighted);
    }
    context.painter.restore();
    draw_scroll_marks(drawing, area, scrolled);
}

void draw_open_menu(const DrawContext& context, const OpenMenu& menu)
{
    const bool casts_shadow = element_look(context.core.look(), menu.menu().menu_state(), Element::Bubble,
                                           VisualState::Normal)
                                  .picture.isEmpty();
    for (std::size_t i = 0; i < menu.panels().size(); ++i) {
        const OpenMenu::Panel& panel = menu.panels()[i];
        const double share = context.core.transitions().share_of(menu, i);
        FadedLayer layer(context.painter, menu.bounds(), white, float(1 - share));
        DrawContext apart = context.onto(layer.painter());
        layer.painter().save();
        layer.painter().translate(0, (share - 1) * slide);
        if (casts_shadow)
            draw_shadow(layer.painter(), panel.area);
        draw_menu_list(apart, menu.menu(), panel.list, panel.area, panel.scrolled, panel.highlighted);
        layer.painter().restore();
    }
}

} // namespace tarn
