// What the view offers for editing beyond the mouse tools: commands, a context menu, texts edited in place.

#include "frame/edit_commands.h"
#include "inline_editor.h"
#include "view3d.h"

#include <QKeyEvent>

#include <algorithm>

namespace {

constexpr int least_font = 9; ///< pixels; what is smaller in a reduced view cannot be read while it is typed

} // namespace

bool CView3D::run_command(const QKeyEvent& event)
{
    if (!m_editor)
        return false;
    const auto commands = m_editor->commands();
    const QKeySequence pressed(event.keyCombination());
    const auto command = std::find_if(commands.begin(), commands.end(), [&](const tarn::EditCommand& each) {
        return each.enabled && (keys_of ? keys_of(each) : QList{each.keys}).contains(pressed);
    });
    if (command == commands.end())
        return false;
    tarn::run_edit_command(window(), *m_editor, *command);
    return true;
}

void CView3D::pop_context_menu(QPointF place)
{
    if (m_editor)
        tarn::pop_edit_menu(window(), *m_editor, m_editor->context_commands(place),
                            mapToGlobal(from_screen({place, QSizeF()}).topLeft().toPoint()));
}

bool CView3D::edit_text_at(QPointF place)
{
    finish_text();
    auto text = m_editor && on_screen(place) ? m_editor->text_at(place) : std::nullopt;
    if (!text)
        return false;
    const QRect rect = from_screen(text->place).toAlignedRect();
    text->font.setPixelSize(std::max(least_font, qRound(text->font.pixelSize() * scale())));
    m_text = new tarn::InlineEditor(std::move(*text), rect, *this);
    return true;
}

void CView3D::finish_text()
{
    if (m_text)
        m_text->finish(true);
    m_text = nullptr;
}
