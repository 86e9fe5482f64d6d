#pragma once

#include <QString>
#include <Qt>

namespace tarn {

/// The editing of one line of text: caret, selection and what keys do to them. Positions are UTF-16 units and never
/// stand inside a character.
class LineEditor {
public:
    const QString& text() const { return m_text; }
    /// A new text from outside; caret and selection are held to it.
    void set_text(const QString& text);
    /// At most so many UTF-16 units can be typed; 0 for any number.
    void set_max_length(int units) { m_max_length = units; }

    int caret() const { return m_caret; }
    int anchor() const { return m_anchor; } ///< the selection's other end; equal to caret() without one
    bool has_selection() const { return m_caret != m_anchor; }
    QString selected_text() const;
    void select_all();
    void place_caret(int position, bool select);

    /// The nearest place at or before `position` that stands inside no character.
    int boundary_near(int position) const;

    /// What an input method is about to put in at the caret; shown, but no part of the text.
    const QString& preedit() const { return m_preedit; }
    void set_preedit(const QString& text) { m_preedit = text; }

    /// Replaces the selection. Line breaks become blanks. True when the text changed.
    bool insert(const QString& text);
    /// True when the key is one of editing; `changed` tells whether the text is another one.
    bool key(int key, Qt::KeyboardModifiers modifiers, bool& changed);

private:
    int next(int position, bool forward, bool word) const;
    bool remove(int from, int to);

    QString m_text;
    QString m_preedit;
    int m_caret = 0;
    int m_anchor = 0;
    int m_max_length = 0;
};

} // namespace tarn
