#pragma once

#include "qscintilla.h"
#include "script/script_runtime.h"
#include "script_words.h"

class QTimer;

/// The editor of a Lua text: colours of the program's theme, completion and call tips, marks on faulty lines.
class CScriptEdit : public QsciScintilla {
    Q_OBJECT

public:
    explicit CScriptEdit(QWidget* parent = nullptr);

    /// What completion, call tips and colours know besides Lua: verbs, and the names that objects' fields have.
    void offer(const std::vector<tarn::ScriptVerb>& verbs, const QStringList& field_names = {},
               const QMap<QString, QStringList>& names = {});
    /// The text with \n as the end of every line.
    QString script() const;
    /// `line` counts from 0; lines outside the text go to its nearest end.
    void go_to_line(int line);

    /// What is searched for.
    struct Search {
        QString what;
        bool match_case = false;
        bool whole_word = false;
    };
    /// Selects the next place, from the other end when none follows; false when there is none.
    bool find(const Search& search, bool forward);
    /// As find() forward, but a selected place is found again: for a search that grows letter by letter.
    bool find_here(const Search& search);
    /// Replaces the selection when it is a place of the search, then goes on to the next.
    void replace_next(const Search& search, const QString& by);
    /// One step of the editor's undo. Answers how many places there were.
    int replace_all(const Search& search, const QString& by);
    /// How many places there are, and which of them is selected, from 1; 0: none is.
    struct Places {
        int count = 0;
        int selected = 0;
    };
    /// Shows the places of the search; those of an empty one are none.
    Places show_places(const Search& search);

    /// Lines, from 0, that are marked as faulty.
    std::vector<int> faulty_lines();

Q_SIGNALS:
    /// The text was checked; `message` is empty and `line`, which counts from 0, is -1 when nothing is wrong with it.
    void checked(const QString& message, int line);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    // Look
    void define_marks();
    void use_colors();
    void use_fold_colors();
    void fit_number_margin();

    // Typing
    bool run_command(const QKeyEvent& event);
    bool dismiss();
    void break_line();
    void align_block_end();
    void unindent_lines();
    void toggle_comment();
    std::pair<int, int> selected_lines() const;

    // Completion and tips
    void follow_typing(QChar typed);
    void complete(bool asked);
    void show_asked_tip();
    void update_call_tip();
    void show_call_tip(const std::optional<tarn::ScriptWords::Tip>& tip);
    QString tip_at(QPoint place) const;

    void check();
    void mark_fault(const tarn::ScriptError& fault);
    QString text_before(long position) const;
    qsizetype cursor_place() const;
    long position_of(const QString& all, qsizetype place) const;
    bool is_active(unsigned int message) const { return SendScintilla(message) != 0; }

    QTimer* m_check_timer;
    tarn::ScriptWords m_words;
    std::vector<tarn::ScriptError> m_faults;
    QString m_call_tip;                  ///< the text of the one that is shown
    qsizetype m_dismissed_call_tip = -1; ///< the place of the call whose tip the author closed
};
