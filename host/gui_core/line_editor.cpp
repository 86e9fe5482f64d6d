#include "line_editor.h"

#include "core/field.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace tarn {

void LineEditor::set_text(const QString& text)
{
    m_text = text;
    m_caret = std::min(m_caret, int(text.size()));
    m_anchor = std::min(m_anchor, int(text.size()));
}

QString LineEditor::selected_text() const
{
    return m_text.mid(std::min(m_caret, m_anchor), std::abs(m_caret - m_anchor));
}

void LineEditor::select_all()
{
    m_anchor = 0;
    m_caret = int(m_text.size());
}

void LineEditor::place_caret(int position, bool select)
{
    m_caret = std::clamp(position, 0, int(m_text.size()));
    if (!select)
        m_anchor = m_caret;
}

namespace {

constexpr qsizetype usual_reach = 128; ///< UTF-16 units in which nearly every character and word ends

/// The next boundary in `text` behind or before `position`; -1 when there is none.
qsizetype next_boundary(QStringView text, qsizetype position, bool forward, bool word)
{
    QTextBoundaryFinder finder(word ? QTextBoundaryFinder::Word : QTextBoundaryFinder::Grapheme, text.data(),
                               text.size());
    finder.setPosition(position);
    do {
        position = forward ? finder.toNextBoundary() : finder.toPreviousBoundary();
        // A word move stops where a word begins, not at the blank before it.
    } while (word && position > 0 && position < text.size() && text[position].isSpace());
    return position;
}

} // namespace

// The finder works through all that it is given before it answers. So it is given the neighbourhood first, and more only
// where the answer is an end of that, which may be none of the text's.
int LineEditor::next(int position, bool forward, bool word) const
{
    for (qsizetype reach = usual_reach;; reach *= 8) {
        qsizetype begin = std::max<qsizetype>(0, position - reach);
        const qsizetype end = std::min(m_text.size(), position + reach);
        // Where a blank is followed by something else one character ends and another begins, whatever stood before.
        while (begin > 0 && begin < position && !(m_text[begin - 1].isSpace() && !m_text[begin].isSpace()))
            ++begin;
        if (begin == position && begin > 0)
            begin = std::max<qsizetype>(0, position - reach);
        const qsizetype found = next_boundary(QStringView(m_text).mid(begin, end - begin), position - begin, forward,
                                              word);
        const bool at_begin = found <= 0 && begin > 0;
        const bool at_end = (found < 0 || begin + found >= end) && end < m_text.size();
        if (forward ? !at_end : !at_begin)
            return int(found >= 0 ? begin + found : forward ? m_text.size() : 0);
    }
}

int LineEditor::boundary_near(int position) const
{
    position = std::clamp(position, 0, int(m_text.size()));
    return position == 0 || position == m_text.size() ? position : next(position + 1, false, false);
}

bool LineEditor::remove(int from, int to)
{
    if (from > to)
        std::swap(from, to);
    m_text.remove(from, to - from);
    m_caret = m_anchor = from;
    return from != to;
}

bool LineEditor::insert(const QString& text)
{
    QString line = text;
    for (QChar& c : line)
        if (c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QLatin1Char('\t') || c == QChar::LineSeparator)
            c = QLatin1Char(' ');
    line.removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
    bool changed = remove(m_caret, m_anchor);
    if (m_max_length > 0)
        line = cut_text(line, std::max(0, m_max_length - int(m_text.size())));
    m_text.insert(m_caret, line);
    m_caret += int(line.size());
    m_anchor = m_caret;
    changed |= !line.isEmpty();
    return changed;
}

bool LineEditor::key(int key, Qt::KeyboardModifiers modifiers, bool& changed)
{
    const bool select = modifiers & Qt::ShiftModifier;
    const bool control = modifiers & Qt::ControlModifier;
    QClipboard* clipboard = QGuiApplication::clipboard();
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (has_selection() && !select && !control)
            place_caret(key == Qt::Key_Left ? std::min(m_caret, m_anchor) : std::max(m_caret, m_anchor), false);
        else
            place_caret(next(m_caret, key == Qt::Key_Right, control), select);
        return true;
    case Qt::Key_Home: place_caret(0, select); return true;
    case Qt::Key_End: place_caret(int(m_text.size()), select); return true;
    case Qt::Key_Backspace:
        changed = remove(m_anchor, has_selection() ? m_caret : next(m_caret, false, control));
        return true;
    case Qt::Key_Delete:
        changed = remove(m_anchor, has_selection() ? m_caret : next(m_caret, true, control));
        return true;
    case Qt::Key_A:
        if (control)
            select_all();
        return control;
    case Qt::Key_C:
    case Qt::Key_X:
        if (control && has_selection()) {
            clipboard->setText(selected_text());
            changed = key == Qt::Key_X && remove(m_caret, m_anchor);
        }
        return control;
    case Qt::Key_V:
        if (control)
            changed = insert(clipboard->text());
        return control;
    default: return false;
    }
}

} // namespace tarn
