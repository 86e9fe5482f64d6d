#include "lua_text.h"
#include "script_edit.h"

#include <QKeyEvent>
#include <QListWidget>

#include <algorithm>

// Keys in the editor of scripts: indentation, comments, completion and call tips.

namespace {

constexpr qsizetype letters_to_complete = 2;
constexpr QLatin1String comment_mark("--");

/// The steps of the editor's undo within the scope are one.
class OneUndo {
public:
    explicit OneUndo(QsciScintilla& edit) : m_edit(edit) { m_edit.beginUndoAction(); }
    ~OneUndo() { m_edit.endUndoAction(); }
    OneUndo(const OneUndo&) = delete;
    OneUndo& operator=(const OneUndo&) = delete;

private:
    QsciScintilla& m_edit;
};

bool is_blank(const QString& line)
{
    return line.trimmed().isEmpty();
}

} // namespace

void CScriptEdit::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        event->setAccepted(dismiss());
        return;
    }
    if (run_command(*event)) {
        event->accept();
        return;
    }
    const bool is_break = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    // Before the key is handled: it may close the list, and then Enter would also break the line.
    const bool completing = is_active(SCI_AUTOCACTIVE);
    if (is_break && !completing && !(event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier))) {
        break_line();
        event->accept();
        return;
    }
    QsciScintilla::keyPressEvent(event);
    const QString typed = event->text();
    if (!typed.isEmpty() && typed.front().isPrint() && !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)))
        follow_typing(typed.front());
    else if (completing)
        align_block_end();
}

bool CScriptEdit::run_command(const QKeyEvent& event)
{
    const auto modifiers = event.modifiers() & ~Qt::KeypadModifier;
    const bool ctrl = modifiers & Qt::ControlModifier && !(modifiers & Qt::AltModifier);
    switch (event.key()) {
    case Qt::Key_Backtab: unindent_lines(); return true;
    case Qt::Key_Slash:
        if (ctrl)
            toggle_comment();
        return ctrl;
    case Qt::Key_Space:
        if (ctrl && modifiers & Qt::ShiftModifier)
            show_asked_tip();
        else if (ctrl)
            complete(true);
        return ctrl;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        if (ctrl)
            zoomIn();
        return ctrl;
    case Qt::Key_Minus:
        if (ctrl)
            zoomOut();
        return ctrl;
    case Qt::Key_0:
        if (ctrl)
            zoomTo(0);
        return ctrl;
    default: break;
    }
    if (event.matches(QKeySequence::Redo)) {
        redo();
        return true;
    }
    return false;
}

bool CScriptEdit::dismiss()
{
    const bool tip = is_active(SCI_CALLTIPACTIVE);
    const bool list = is_active(SCI_AUTOCACTIVE);
    if (const auto shown = tip ? m_words.call_tip(text(), cursor_place()) : std::nullopt)
        m_dismissed_call_tip = shown->place;
    SendScintilla(SCI_CANCEL);
    return tip || list;
}

// Indentation and comments --------------------------------------------------------------------------------------------

void CScriptEdit::break_line()
{
    const OneUndo one_undo(*this);
    const long begin = SendScintilla(SCI_GETSELECTIONSTART);
    const int line = int(SendScintilla(SCI_LINEFROMPOSITION, begin));
    const int columns = indentation(line) + (tarn::lua_opens_block(text_before(begin)) ? tabWidth() : 0);
    SendScintilla(SCI_NEWLINE);
    // A line that is left blank keeps no blanks.
    if (is_blank(text(line)))
        setIndentation(line, 0);
    setIndentation(line + 1, columns);
    SendScintilla(SCI_GOTOPOS, SendScintilla(SCI_GETLINEINDENTPOSITION, ulong(line) + 1));
    SendScintilla(SCI_CHOOSECARETX);
}

/// A word or bracket that was just typed to its end goes below the line whose block it closes.
void CScriptEdit::align_block_end()
{
    const QString before = text_before(SendScintilla(SCI_GETCURRENTPOS));
    const qsizetype begin = tarn::lua_block_begin(before);
    if (begin < 0)
        return;
    const int columns = indentation(int(before.left(begin).count(u'\n')));
    const int line = int(before.count(u'\n'));
    if (indentation(line) != columns)
        setIndentation(line, columns);
}

std::pair<int, int> CScriptEdit::selected_lines() const
{
    int first = 0;
    int last = 0;
    int column = 0;
    int end_column = 0;
    getCursorPosition(&first, &column);
    last = first;
    if (hasSelectedText()) {
        getSelection(&first, &column, &last, &end_column);
        if (end_column == 0 && last > first)
            --last; // The selection ends before it.
    }
    return {first, last};
}

void CScriptEdit::unindent_lines()
{
    const OneUndo one_undo(*this);
    const auto [first, last] = selected_lines();
    for (int line = first; line <= last; ++line)
        setIndentation(line, std::max(0, (indentation(line) - 1) / tabWidth() * tabWidth()));
}

void CScriptEdit::toggle_comment()
{
    const OneUndo one_undo(*this);
    const auto [first, last] = selected_lines();
    int column = 1000;
    bool are_comments = true;
    for (int line = first; line <= last; ++line)
        if (const QString words = text(line); !is_blank(words)) {
            column = std::min(column, indentation(line));
            are_comments = are_comments && words.trimmed().startsWith(comment_mark);
        }
    for (int line = first; line <= last; ++line) {
        const QString words = text(line);
        if (is_blank(words))
            continue;
        if (are_comments) {
            const auto at = int(words.indexOf(comment_mark));
            const bool space = words.mid(at + comment_mark.size()).startsWith(u' ');
            const long begin = positionFromLineIndex(line, at);
            SendScintilla(SCI_DELETERANGE, ulong(begin), long(comment_mark.size() + space));
        } else {
            const long begin = SendScintilla(SCI_FINDCOLUMN, ulong(line), long(column));
            SendScintilla(SCI_SETTARGETRANGE, ulong(begin), begin);
            SendScintilla(SCI_REPLACETARGET, 3UL, "-- ");
        }
    }
}

// Completion and tips -------------------------------------------------------------------------------------------------

void CScriptEdit::follow_typing(QChar typed)
{
    align_block_end();
    if (typed == u'_' || typed == u'.' || typed == u':' || typed == u'"' || typed == u'\'' || typed == u' '
        || typed.isLetterOrNumber())
        complete(false);
    if (!is_active(SCI_AUTOCACTIVE))
        show_call_tip(m_words.call_tip(text(), cursor_place()));
}

void CScriptEdit::complete(bool asked)
{
    const QString all = text();
    const qsizetype place = cursor_place();
    const auto offer = m_words.offer(all, place);
    const QString typed = all.mid(place - offer.typed, offer.typed);
    const bool enough = asked || offer.is_member || offer.is_name || offer.typed >= letters_to_complete;
    // A word that is complete must not stay in a list, or the next Enter would choose it there.
    if (!enough || offer.words.isEmpty() || (offer.words.contains(typed) && (!asked || offer.words.size() == 1))) {
        SendScintilla(SCI_AUTOCCANCEL);
        return;
    }
    if (is_active(SCI_AUTOCACTIVE) && !asked)
        return;
    SendScintilla(SCI_AUTOCSHOW, ulong(typed.toUtf8().size()),
                  offer.words.join(QLatin1Char('\n')).toUtf8().constData());
    // On a dark editor the list's frame could not be seen. Lists shown before may still be about to go.
    if (const auto lists = findChildren<QListWidget*>(); !lists.isEmpty()) {
        QPalette colors = palette();
        colors.setColor(QPalette::Base, colors.color(QPalette::Button));
        lists.back()->setPalette(colors);
    }
}

void CScriptEdit::show_asked_tip()
{
    m_dismissed_call_tip = -1;
    auto tip = m_words.call_tip(text(), cursor_place());
    show_call_tip(tip ? tip : m_words.name_tip(text(), cursor_place()));
}

/// The tip that is shown follows the cursor from parameter to parameter.
void CScriptEdit::update_call_tip()
{
    if (is_active(SCI_CALLTIPACTIVE))
        show_call_tip(m_words.call_tip(text(), cursor_place()));
}

void CScriptEdit::show_call_tip(const std::optional<tarn::ScriptWords::Tip>& tip)
{
    if (!tip || tip->place != m_dismissed_call_tip)
        m_dismissed_call_tip = -1;
    if (!tip) {
        SendScintilla(SCI_CALLTIPCANCEL);
        return;
    }
    if (tip->place == m_dismissed_call_tip)
        return;
    if (!is_active(SCI_CALLTIPACTIVE) || tip->text != m_call_tip) {
        m_call_tip = tip->text;
        SendScintilla(SCI_CALLTIPSHOW, ulong(position_of(text(), tip->place)), tip->text.toUtf8().constData());
    }
    SendScintilla(SCI_CALLTIPSETHLT, ulong(position_of(tip->text, tip->begin)), position_of(tip->text, tip->end));
}
