#pragma once

#include "child_dlg.h"
#include "script_edit.h"
#include "script_find_bar.h"
#include "script_run.h"
#include "script_run_log.h"

#include <memory>

class QDialog;
class QSplitter;

namespace tarn {

/// The controls of the script editor's dialog, by which automation knows it.
class ScriptPage : public CChildDlg {
    Q_OBJECT

public:
    ScriptPage(QString function_name, CBaseWorld& world, QDialog& dialog, std::vector<ScriptValue> arguments);

    CScriptEdit& script() const { return *m_script; }
    QSplitter& splitter() const { return *m_splitter; }

protected:
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;
    void OnInitDialog() override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void init_bar();
    void init_log();
    void init_status();
    void add_shortcuts();
    void ask_for_line();
    void copy_log() const;

    QDialog& m_dialog;
    CBaseWorld& m_world;
    ScriptRunLog m_log;
    ScriptRun m_run;
    std::unique_ptr<ScriptFindBar> m_bar;
    CScriptEdit* m_script = nullptr;
    QSplitter* m_splitter = nullptr;
    int m_fault_line = -1;
};

} // namespace tarn
