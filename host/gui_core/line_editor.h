#pragma once

#include <QString>
#include <Qt>

#include <vector>

namespace tarn {

/// The editing of one line of text: caret, selection and what keys do to them. Positions are UTF-16 units and never
/// stand inside a character.
class LineEditor {
public:
    const QString& text() const { return m_text; }
    /// A new text from outside; caret and selection are held to it, and nothing can be undone.
    void set_text(const QString& text);
    /// At most so many UTF-16 units can be typed; 0 for any number.
    void set_max_length(int units) { m_max_length = units; }
    /// Only what is, or may become, a number can be typed: digits after a sign, one decimal point.
    void set_numbers_only(bool numbers) { m_numbers_only = numbers; }
    /// Nothing that is typed changes the text.
    void set_read_only(bool read_only) { m_read_only = read_only; }
    bool is_read_only() const { return m_read_only; }
    /// A password: it is not copied, and nothing tells where its words end.
    void set_secret(bool secret) { m_secret = secret; }

    int caret() const { return m_caret; }
    int anchor() const { return m_anchor; } ///< the selection's other end; equal to caret() without one
    bool has_selection() const { return m_caret != m_anchor; }
    QString selected_text() const;
    void select_all();
    void place_caret(int position, bool select);
    /// The word that the character at `position` belongs to.
    void select_word(int position);

    /// The nearest place at or before `position` that stands inside no character.
    int boundary_near(int position) const;

    /// What an input method is about to put in at the caret; shown, but no part of the text.
    const QString& preedit() const { return m_preedit; }
    void set_preedit(const QString& text) { m_preedit = text; }

    /// Replaces the selection. Line breaks become blanks. True when the text changed. What is typed on is one step of
    /// undo up to the next word.
    bool insert(const QString& text);
    /// True when the key is one of editing; `changed` tells whether the text is another one.
    bool key(int key, Qt::KeyboardModifiers modifiers, bool& changed);

    bool undo();
    bool redo();

private:
    /// A part of the text that was replaced, and where caret and anchor were before.
    struct Change {
        int at;
        QString removed;
        QString inserted;
        int caret;
        int anchor;
    };

    int next(int position, bool forward, bool word) const;
    bool replace(int from, int to, const QString& with);
    bool merge(const Change& change);
    void note(const Change& change);
    bool paste(const QString& text);

    QString m_text;
    QString m_preedit;
    int m_caret = 0;
    int m_anchor = 0;
    int m_max_length = 0;
    bool m_secret = false;
    bool m_numbers_only = false;
    bool m_read_only = false;
    std::vector<Change> m_changes;
    std::size_t m_done = 0; ///< of these; the others were undone
    bool m_goes_on = false; ///< the caret is where the last change left it
};

} // namespace tarn
