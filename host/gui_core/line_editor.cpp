#include "line_editor.h"

#include "core/field.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace tarn {

void LineEditor::set_text(const QString& text)
{
    if (text == m_text)
        return;
    m_changes.clear();
    m_done = 0;
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
    m_goes_on = false;
    m_anchor = 0;
    m_caret = int(m_text.size());
}

void LineEditor::place_caret(int position, bool select)
{
    m_goes_on = false;
    m_caret = std::clamp(position, 0, int(m_text.size()));
    if (!select)
        m_anchor = m_caret;
}

namespace {

constexpr std::size_t most_changes = 200;
constexpr qsizetype most_kept = 1 << 20; ///< UTF-16 units that all changes hold
constexpr int longest_word = 1024;       ///< UTF-16 units to both sides that a double-click selects

bool may_become_number(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^[+-]?[0-9]*[.]?[0-9]*$"));
    return form.match(text).hasMatch();
}

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
    if (word && m_secret)
        return forward ? int(m_text.size()) : 0;
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

void LineEditor::select_word(int position)
{
    if (m_secret)
        return select_all();
    position = std::clamp(position, 0, std::max(0, int(m_text.size()) - 1));
    const int begin = boundary_near(position - longest_word);
    const QStringView part = QStringView(m_text).mid(begin, boundary_near(position + longest_word) - begin);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, part.data(), part.size());
    finder.setPosition(position - begin);
    const qsizetype from = finder.isAtBoundary() ? position - begin : finder.toPreviousBoundary();
    finder.setPosition(from);
    const qsizetype to = finder.toNextBoundary();
    place_caret(begin + int(std::max<qsizetype>(0, from)), false);
    place_caret(begin + int(to < 0 ? part.size() : to), true);
}

/// What goes on where the last change ended becomes a part of it; answers whether it did.
bool LineEditor::merge(const Change& change)
{
    if (!m_goes_on || m_done == 0)
        return false;
    Change& last = m_changes.back();
    const bool typed_on = change.removed.isEmpty() && !last.inserted.isEmpty()
        && change.at == last.at + last.inserted.size();
    const bool new_word = typed_on && last.inserted.back().isSpace() && !change.inserted.front().isSpace();
    const bool removes = change.inserted.isEmpty() && last.inserted.isEmpty();
    if (typed_on && !new_word) {
        last.inserted += change.inserted;
    } else if (removes && change.at + change.removed.size() == last.at) {
        last.removed.prepend(change.removed);
        last.at = change.at;
    } else if (removes && change.at == last.at) {
        last.removed += change.removed;
    } else {
        return false;
    }
    return true;
}

void LineEditor::note(const Change& change)
{
    m_changes.resize(m_done);
    if (merge(change))
        return;
    m_changes.push_back(change);
    qsizetype kept = 0;
    std::size_t first = m_changes.size();
    while (first > 0 && m_changes.size() - first < most_changes) {
        const Change& older = m_changes[first - 1];
        kept += older.removed.size() + older.inserted.size();
        if (kept > most_kept && first < m_changes.size())
            break;
        --first;
    }
    m_changes.erase(m_changes.begin(), m_changes.begin() + std::ptrdiff_t(first));
    m_done = m_changes.size();
}

bool LineEditor::replace(int from, int to, const QString& with)
{
    if (from > to)
        std::swap(from, to);
    if (m_read_only || (from == to && with.isEmpty()))
        return false;
    if (m_numbers_only && !with.isEmpty() && !may_become_number(QString(m_text).replace(from, to - from, with)))
        return false;
    note({from, m_text.mid(from, to - from), with, m_caret, m_anchor});
    m_text.replace(from, to - from, with);
    m_caret = m_anchor = from + int(with.size());
    m_goes_on = true;
    return true;
}

bool LineEditor::undo()
{
    if (m_read_only || m_done == 0)
        return false;
    const Change& change = m_changes[--m_done];
    m_text.replace(change.at, change.inserted.size(), change.removed);
    m_caret = change.caret;
    m_anchor = change.anchor;
    m_goes_on = false;
    return true;
}

bool LineEditor::redo()
{
    if (m_read_only || m_done == m_changes.size())
        return false;
    const Change& change = m_changes[m_done++];
    m_text.replace(change.at, change.removed.size(), change.inserted);
    m_caret = m_anchor = change.at + int(change.inserted.size());
    m_goes_on = false;
    return true;
}

bool LineEditor::insert(const QString& text)
{
    QString line = text;
    for (QChar& c : line)
        if (c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QLatin1Char('\t') || c == QChar::LineSeparator)
            c = QLatin1Char(' ');
    line.removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
    if (m_max_length > 0)
        line = cut_text(line, std::max(0, m_max_length - int(m_text.size()) + std::abs(m_caret - m_anchor)));
    return replace(m_caret, m_anchor, line);
}

bool LineEditor::paste(const QString& text)
{
    m_goes_on = false;
    const bool changed = insert(text);
    m_goes_on = false;
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
        changed = replace(m_anchor, has_selection() ? m_caret : next(m_caret, false, control), {});
        return true;
    case Qt::Key_Delete:
        changed = replace(m_anchor, has_selection() ? m_caret : next(m_caret, true, control), {});
        return true;
    case Qt::Key_A:
        if (control)
            select_all();
        return control;
    case Qt::Key_C:
    case Qt::Key_X:
        if (control && has_selection() && !m_secret) {
            clipboard->setText(selected_text());
            changed = key == Qt::Key_X && replace(m_caret, m_anchor, {});
        }
        return control;
    case Qt::Key_V:
        if (control)
            changed = paste(clipboard->text());
        return control;
    case Qt::Key_Z:
        if (control)
            changed = select ? redo() : undo();
        return control;
    case Qt::Key_Y:
        if (control)
            changed = redo();
        return control;
    default: return false;
    }
}

} // namespace tarn
