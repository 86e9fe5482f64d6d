#include "dxut_edit_box.h"

#include "control_style.h"
#include "draw_context.h"
#include "gui_core.h"

#include <QPainter>
#include <QTextLayout>

#include <algorithm>

using tarn::EditBoxState;

namespace {

constexpr quint32 selection_color = 0xff2f7f8f;
constexpr quint32 caret_color = 0xffbfeef5;
constexpr quint32 border_color = 0xff6fd3e0;

/// A laid-out line of text: where its characters are.
struct Line {
    explicit Line(const QString& text, const QFont& font) : layout(text, font)
    {
        QTextOption option;
        option.setWrapMode(QTextOption::NoWrap);
        layout.setTextOption(option);
        layout.beginLayout();
        line = layout.createLine();
        layout.endLayout();
    }
    QTextLayout layout;
    QTextLine line;
};

} // namespace

CDXUTEditBox::CDXUTEditBox(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new EditBoxState) {}

void CDXUTEditBox::reset_run_state()
{
    m_editor = {};
    m_scroll = 0;
    state_changed();
}

void CDXUTEditBox::state_changed()
{
    m_editor.set_max_length(state<EditBoxState>().max_length);
    m_editor.set_text(text());
    CDXUTStatic::state_changed();
}

tarn::VisualState CDXUTEditBox::visual_state() const
{
    // Where one types stays marked while the mouse passes over it.
    using enum tarn::VisualState;
    const tarn::VisualState look = CDXUTStatic::visual_state();
    const bool focused = core().live().focused == this;
    return focused && look != Disabled && look != Hidden ? Focused : look;
}

QRectF CDXUTEditBox::text_area(const QRectF& frame) const
{
    const auto& s = state<EditBoxState>();
    const double inset = s.spacing + s.border + 2;
    return frame.adjusted(inset, 0, -inset, 0);
}

/// The text with what the input method is about to put in.
QString CDXUTEditBox::shown_text() const
{
    QString shown = m_editor.text();
    if (state<EditBoxState>().password)
        shown.fill(QChar(0x2022));
    return shown.insert(m_editor.caret(), m_editor.preedit());
}

double CDXUTEditBox::x_of(int position) const
{
    const Line shown(shown_text(), font_of(state<EditBoxState>()));
    return shown.line.isValid() ? shown.line.cursorToX(position) : 0;
}

int CDXUTEditBox::position_at(double x) const
{
    const Line shown(shown_text(), font_of(state<EditBoxState>()));
    return shown.line.isValid() ? shown.line.xToCursor(x) : 0;
}

void CDXUTEditBox::draw(tarn::DrawContext& context, const QRectF& area) const
{
    const auto& s = state<EditBoxState>();
    const bool focused = core().live().focused == this;
    context.draw_element(tarn::Element::Field, visual_state(), area);
    QPainter& painter = context.painter;
    painter.save();
    if (s.border > 0) {
        painter.setPen(QPen(QColor::fromRgba(border_color), s.border));
        painter.drawRect(area.adjusted(s.border / 2.0, s.border / 2.0, -s.border / 2.0, -s.border / 2.0));
    }
    const QRectF place = text_area(area);
    painter.setClipRect(place, Qt::IntersectClip);
    const Line shown(shown_text(), font_of(s));
    const double spare = place.width() - shown.line.naturalTextWidth();
    const double shift = focused || spare < 0 ? 0 : spare * s.horizontal_align / 2;
    const QPointF corner(place.x() + shift - m_scroll,
                         place.y() + (place.height() - shown.line.height()) * s.vertical_align / 2);
    if (focused && m_editor.has_selection()) {
        const double from = shown.line.cursorToX(std::min(m_editor.caret(), m_editor.anchor()));
        const double to = shown.line.cursorToX(std::max(m_editor.caret(), m_editor.anchor()));
        painter.fillRect(QRectF(corner.x() + from, corner.y(), to - from, shown.line.height()),
                         QColor::fromRgba(selection_color));
    }
    painter.setPen(QColor::fromRgba(text_color_in(visual_state(), s.text_color)));
    shown.layout.draw(&painter, corner);
    if (focused) {
        const double x = corner.x() + shown.line.cursorToX(m_editor.caret() + int(m_editor.preedit().size()));
        painter.fillRect(QRectF(x, corner.y() + 1, 1.5, shown.line.height() - 2), QColor::fromRgba(caret_color));
    }
    painter.restore();
}

QRectF CDXUTEditBox::caret_rect() const
{
    const QRectF place = text_area(rect());
    return {place.x() + x_of(m_editor.caret()) - m_scroll, place.y(), 1, place.height()};
}

void CDXUTEditBox::scroll_to_caret()
{
    const double width = text_area(rect()).width();
    const double x = x_of(m_editor.caret() + int(m_editor.preedit().size()));
    if (x - m_scroll > width - 2)
        m_scroll = x - width + 2;
    m_scroll = std::max(0.0, std::min(m_scroll, x));
}

void CDXUTEditBox::after_edit(bool changed)
{
    if (changed)
        SetText(m_editor.text());
    scroll_to_caret();
    redraw();
}

void CDXUTEditBox::mouse_pressed(QPointF inside)
{
    m_editor.place_caret(position_at(inside.x() - (text_area(rect()).x() - rect().x()) + m_scroll), false);
    after_edit(false);
}

void CDXUTEditBox::mouse_dragged(QPointF inside)
{
    m_editor.place_caret(position_at(inside.x() - (text_area(rect()).x() - rect().x()) + m_scroll), true);
    after_edit(false);
}

bool CDXUTEditBox::key_pressed(int key, Qt::KeyboardModifiers modifiers)
{
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        raise(EVENT_EDITBOX_ENTER);
        return true;
    }
    bool changed = false;
    if (!m_editor.key(key, modifiers, changed))
        return false;
    after_edit(changed);
    return true;
}

bool CDXUTEditBox::text_typed(const QString& text, const QString& preedit)
{
    const bool changed = m_editor.insert(text);
    m_editor.set_preedit(preedit);
    after_edit(changed);
    return true;
}
