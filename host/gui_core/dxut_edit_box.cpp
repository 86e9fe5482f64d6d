#include "dxut_edit_box.h"

#include "control_style.h"
#include "core/text_part.h"
#include "gui_core.h"
#include "text_line.h"

#include <algorithm>

using tarn::EditBoxState;

namespace {

constexpr int least_laid_out = 256; ///< UTF-16 units; many letters that take no place shall still move the caret

} // namespace

void CDXUTEditBox::reset_run_state()
{
    m_editor = {};
    m_first = 0;
    m_scroll = 0;
    state_changed();
}

void CDXUTEditBox::state_changed()
{
    m_editor.set_max_length(state<EditBoxState>().max_length);
    m_editor.set_secret(state<EditBoxState>().password);
    m_editor.set_numbers_only(state<EditBoxState>().numbers_only);
    m_editor.set_read_only(state<EditBoxState>().read_only);
    m_editor.set_text(text());
    if (m_first > m_editor.caret()) { // a shorter text came from outside
        m_first = m_editor.boundary_near(m_editor.caret() - laid_out_units() / 2);
        m_scroll = 0;
    }
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

int CDXUTEditBox::laid_out_units() const
{
    const QSizeF area(text_area(rect()).width(), 0);
    return int(2 * tarn::units_that_show(area, font_of(core().look(), state<EditBoxState>()).pixelSize()))
        + least_laid_out;
}

QString CDXUTEditBox::shown_text() const
{
    QString shown = m_editor.text().mid(m_first, laid_out_units());
    if (state<EditBoxState>().password)
        shown.fill(QChar(0x2022));
    return shown.insert(place_in_shown(m_editor.caret()), m_editor.preedit());
}

int CDXUTEditBox::place_in_shown(int position) const
{
    return std::clamp(position - m_first, 0, laid_out_units());
}

double CDXUTEditBox::x_in_shown(int place) const
{
    const tarn::TextLine shown(shown_text(), font_of(core().look(), state<EditBoxState>()));
    return shown.line.isValid() ? shown.line.cursorToX(place) : 0;
}

/// The position of the text that is nearest to a place, pixels from the control's corner, or that of the character there.
int CDXUTEditBox::position_at(QPointF inside, bool on_character) const
{
    const tarn::TextLine shown(shown_text(), font_of(core().look(), state<EditBoxState>()));
    const double x = inside.x() - (text_area(rect()).x() - rect().x()) + m_scroll;
    const auto way = on_character ? QTextLine::CursorOnCharacter : QTextLine::CursorBetweenCharacters;
    return m_first + (shown.line.isValid() ? shown.line.xToCursor(x, way) : 0);
}

QRectF CDXUTEditBox::caret_rect() const
{
    const QRectF place = text_area(rect());
    return {place.x() + x_in_shown(place_in_shown(m_editor.caret())) - m_scroll, place.y(), 1, place.height()};
}

void CDXUTEditBox::scroll_to_caret()
{
    // A caret that comes near an end of what is laid out moves that, so that there is text on both sides of it.
    const int caret = m_editor.caret();
    const int units = laid_out_units();
    const bool left = m_first > 0 && caret < m_first + units / 8;
    const bool right = m_first + units < m_editor.text().size() && caret > m_first + units * 7 / 8;
    if (left || right) {
        const double before = x_in_shown(place_in_shown(caret));
        m_first = m_editor.boundary_near(std::max(0, caret - units / 2));
        m_scroll += x_in_shown(place_in_shown(caret)) - before;
    }
    const double width = text_area(rect()).width();
    const double x = x_in_shown(place_in_shown(caret) + int(m_editor.preedit().size()));
    if (x - m_scroll > width - 2)
        m_scroll = x - width + 2;
    m_scroll = std::max(0.0, std::min(m_scroll, x));
}

void CDXUTEditBox::after_edit(bool changed)
{
    if (changed)
        SetText(m_editor.text());
    scroll_to_caret();
    core().show_caret();
    redraw();
}

void CDXUTEditBox::mouse_pressed(QPointF inside)
{
    m_drags = true;
    m_editor.place_caret(position_at(inside), false);
    after_edit(false);
}

void CDXUTEditBox::mouse_dragged(QPointF inside)
{
    if (!m_drags)
        return;
    m_editor.place_caret(position_at(inside), true);
    after_edit(false);
}

void CDXUTEditBox::double_clicked(QPointF inside)
{
    m_drags = false; // A hand that trembles shall not change what was selected.
    m_editor.select_word(position_at(inside, true));
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
    m_editor.set_preedit(m_editor.is_read_only() ? QString() : preedit);
    after_edit(changed);
    return true;
}
