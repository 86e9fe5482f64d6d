#pragma once

#include "script/script_api.h"

#include <QDialog>

#include <vector>

class CBaseWorld;

namespace tarn {
class ScriptPage;
}

/// The modal script editor.
class CDlgCmdTest : public QDialog {
    Q_OBJECT

public:
    /// Edits the scene function of that name over `owner`, which may be null. `line` counts from 0 and gets the cursor;
    /// -1 is the beginning. 1: the function has the new text; 2: it has its old one.
    static int do_modal(const QString& function_name, CBaseWorld* world, QWidget* owner, int line)
    {
        return do_modal(function_name, world, owner, line, {});
    }

    /// How the scene calls the function.
    struct Use {
        QString first_line;                       ///< with which the editor begins while the function is empty
        std::vector<tarn::ScriptValue> arguments; ///< a sample of what it is called with, for test runs
    };
    static int do_modal(const QString& function_name, CBaseWorld* world, QWidget* owner, int line, Use use);

    void accept() override;
    void reject() override;

private:
    CDlgCmdTest(const QString& function_name, const QString& text, CBaseWorld& world, QWidget* owner, Use use);

    QString m_name;
    CBaseWorld& m_world;
    tarn::ScriptPage* m_page;
};
