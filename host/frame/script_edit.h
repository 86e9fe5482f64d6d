#pragma once

#include "engine/script/script_api.h"
#include "qscintilla.h"

class QTimer;

/// The editor of a Lua text: colours of the program's theme, completion and call tips, marks on faulty lines.
class CScriptEdit : public QsciScintilla {
    Q_OBJECT

public:
    explicit CScriptEdit(QWidget* parent = nullptr);

    /// What completion and call tips offer.
    void offer(const std::vector<tarn::ScriptVerb>& verbs);
    /// The text with \n as the end of every line.
    QString script() const;
    /// `line` counts from 0; lines outside the text go to its nearest end.
    void go_to_line(int line);

    /// Selects the next place of `what`, from the other end when none follows; false when there is none.
    bool find(const QString& what, bool match_case, bool whole_word, bool forward);
    /// Replaces the selection when it is a place of `what`, then goes on to the next.
    void replace_next(const QString& what, const QString& by, bool match_case, bool whole_word);
    /// One step of the editor's undo. Answers how many places there were.
    int replace_all(const QString& what, const QString& by, bool match_case, bool whole_word);

    /// Lines, from 0, that are marked as faulty.
    std::vector<int> faulty_lines();

Q_SIGNALS:
    /// The text was checked; empty when nothing is wrong with it.
    void checked(const QString& message);

private:
    void use_colors();
    void check();

    QTimer* m_check_timer;
};
