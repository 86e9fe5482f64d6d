#include "dxut_edit_box.h"

#include "control_style.h"
#include "gui_core.h"
#include "text_line.h"

#include <algorithm>

using tarn::EditBoxState;

CDXUTEditBox::CDXUTEditBox(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new EditBoxState) {}

bool CDXUTEditBox::SetSpacing(int pixels)
{
    return change<EditBoxState>(&EditBoxState::spacing, std::clamp(pixels, 0, 100));
}

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

QString CDXUTEditBox::shown_text() const
{
    QString shown = m_editor.text();
    if (state<EditBoxState>().password)
        shown.fill(QChar(0x2022));
    return shown.insert(m_editor.caret(), m_editor.preedit());
}

double CDXUTEditBox::x_of(int position) const
{
    const tarn::TextLine shown(shown_text(), font_of(state<EditBoxState>()));
    return shown.line.isValid() ? shown.line.cursorToX(position) : 0;
}

int CDXUTEditBox::position_at(double x) const
{
    const tarn::TextLine shown(shown_text(), font_of(state<EditBoxState>()));
    return shown.line.isValid() ? shown.line.xToCursor(x) : 0;
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
