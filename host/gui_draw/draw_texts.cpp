#include "control_drawing.h"
#include "draw_context.h"
#include "draw_functions.h"
#include "drawn_state.h"
#include "gui_core/control_style.h"
#include "gui_core/dxut_edit_box.h"
#include "gui_core/dxut_info_box.h"
#include "gui_core/gui_core.h"
#include "gui_core/style_look.h"
#include "gui_core/text_line.h"

#include <QPainter>

#include <algorithm>
#include <deque>

namespace tarn {

namespace {

/// Half as opaque as the text that it stands in for.
QColor faint(quint32 argb)
{
    QColor color = QColor::fromRgba(argb);
    color.setAlpha(color.alpha() / 2);
    return color;
}

/// The lines of an info box that are seen.
struct LineTexts : DrawCache {
    std::deque<TextCache> texts;
};

} // namespace

quint32 text_color_in(const CDXUTControl& control, VisualState look, quint32 authored)
{
    const auto& s = drawn_state<ControlState>(control);
    if (const quint32 chosen = chosen_text_color(s, look))
        return chosen;
    return authored && look != VisualState::Disabled ? authored : control.core().look().text_color(s.type, look);
}

TextLook style_text_look(const StyleLook& style, int owner)
{
    const FontStyle usual = style.font_style(owner);
    return {.font_size = style.font_size(owner),
            .bold = usual.bold,
            .shadow = usual.shadow,
            .family = style.family(owner),
            .italic = usual.italic};
}

TextLook text_look(const CDXUTStatic& control)
{
    const auto& s = drawn_state<StaticState>(control);
    TextLook look = style_text_look(control.core().look(), s.type);
    look.color = text_color_in(control, control.visual_state(), s.text_color);
    if (s.font_size)
        look.font_size = s.font_size;
    look.bold = look.bold || s.bold;
    look.horizontal_align = s.horizontal_align;
    look.vertical_align = s.vertical_align;
    look.word_wrap = s.word_wrap;
    look.shadow = look.shadow || s.shadow;
    if (!control.font_family().isEmpty())
        look.family = control.font_family();
    look.italic = look.italic || control.font_italic();
    return look;
}

void draw_text(DrawContext& context, const CDXUTStatic& control, const QRectF& area)
{
    if (!control.text().isEmpty())
        kept_in<TextCache>(control.draw_slot()).draw(context.painter, area, control.text(), text_look(control));
}

void draw_static(DrawContext& context, const CDXUTStatic& control, const QRectF& area)
{
    draw_text(context, control, area);
}

void draw_edit_box(DrawContext& context, const CDXUTEditBox& edit_box, const QRectF& area)
{
    const auto& s = drawn_state<EditBoxState>(edit_box);
    const LineEditor& editor = edit_box.editor();
    const bool focused = context.core.live().focused == &edit_box;
    context.draw_element(Element::Field, edit_box.visual_state(), area);
    const StyleLook& style = context.core.look();
    const LookOwner& owner = *look_owner(s.type);
    const auto line_color = [&](quint32 chosen, EditBoxColor line) {
        return QColor::fromRgba(chosen ? chosen
                                       : style.color(owner, int(owner.elements.size()) + line, VisualState::Normal));
    };
    QPainter& painter = context.painter;
    painter.save();
    if (s.border > 0) {
        painter.setPen(QPen(line_color(s.border_color, edit_box_border), s.border));
        painter.drawRect(area.adjusted(s.border / 2.0, s.border / 2.0, -s.border / 2.0, -s.border / 2.0));
    }
    const QRectF place = edit_box.text_area(area);
    painter.setClipRect(place, Qt::IntersectClip);
    const QString text = edit_box.shown_text();
    const bool is_empty = text.isEmpty();
    const TextLine shown(is_empty ? s.placeholder : text, font_of(style, s));
    const double spare = place.width() - shown.line.naturalTextWidth();
    const double shift = focused || spare < 0 ? 0 : spare * s.horizontal_align / 2;
    const QPointF corner(place.x() + shift - edit_box.scroll(),
                         place.y() + (place.height() - shown.line.height()) * s.vertical_align / 2);
    if (focused && editor.has_selection()) {
        const auto [first, last] = std::minmax({editor.caret(), editor.anchor()});
        const double from = shown.line.cursorToX(edit_box.place_in_shown(first));
        const double to = shown.line.cursorToX(edit_box.place_in_shown(last));
        painter.fillRect(QRectF(corner.x() + from, corner.y(), to - from, shown.line.height()),
                         line_color(s.selection_color, edit_box_selection));
    }
    const quint32 color = text_color_in(edit_box, edit_box.visual_state(), s.text_color);
    if (s.shadow || style.font_style(s.type).shadow) {
        painter.setPen(text_shadow_color());
        shown.layout.draw(&painter, corner + text_shadow_offset);
    }
    painter.setPen(is_empty ? faint(color) : QColor::fromRgba(color));
    shown.layout.draw(&painter, corner);
    if (focused && context.core.live().caret_shown) {
        const double x = corner.x()
            + shown.line.cursorToX(edit_box.place_in_shown(editor.caret()) + int(editor.preedit().size()));
        painter.fillRect(QRectF(x, corner.y() + 1, 1.5, shown.line.height() - 2),
                         line_color(s.caret_color, edit_box_caret));
    }
    painter.restore();
}

void draw_info_box(DrawContext& context, const CDXUTInfoBox& info_box, const QRectF& area)
{
    const auto& s = drawn_state<InfoBoxState>(info_box);
    constexpr double margin = CDXUTInfoBox::margin;
    context.draw_element(Element::InfoPanel, VisualState::Normal, area);
    const int end = std::max(0, int(s.lines.size()) - info_box.scrolled_back());
    const int begin = std::max(0, end - info_box.seen_lines());
    auto& texts = kept_in<LineTexts>(info_box.draw_slot()).texts;
    texts.resize(std::size_t(end - begin));
    TextLook look = text_look(info_box);
    look.vertical_align = 1;
    look.word_wrap = false;
    for (int i = begin; i < end; ++i) {
        const QRectF place(area.x() + margin, area.y() + margin + (i - begin) * s.line_height,
                           area.width() - 2 * margin, s.line_height);
        texts[std::size_t(i - begin)].draw(context.painter, place, s.lines[i], look);
    }
}

} // namespace tarn
