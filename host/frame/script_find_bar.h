#pragma once

#include "script_edit.h"

class QCheckBox;
class QLabel;
class QLineEdit;

namespace tarn {

/// What the controls of a bar for finding and replacing do with an editor.
class ScriptFindBar : public QObject {
    Q_OBJECT

public:
    struct Controls {
        QWidget* bar;
        QLineEdit* what;
        QLineEdit* by;
        QCheckBox* match_case;
        QCheckBox* whole_word;
        QLabel* result;
    };
    /// Both must outlive it.
    ScriptFindBar(CScriptEdit& edit, const Controls& controls);

    void open(bool to_replace);
    /// The focus goes to the editor. Answers whether the bar was open.
    bool close();

    void find(bool forward);
    void replace();
    void replace_all();
    /// Enter in one of the bar's fields; answers whether it was in one.
    bool enter(bool shift);

private:
    CScriptEdit::Search search() const;
    void refresh();
    void show_result(const QString& text) const;

    CScriptEdit& m_edit;
    Controls m_controls;
    QTimer* m_refresh_timer;
};

} // namespace tarn
