#pragma once

#include <QDialog>

#include <optional>

class CGuiCore;

/// The modal dialog in which one of the scene's menus is chosen.
class CDlgMenuPick : public QDialog {
    Q_OBJECT

public:
    /// `current` is the id of the menu to begin with; 0 for none.
    CDlgMenuPick(const CGuiCore& core, quint32 current);

    /// Runs the dialog over `parent`. The id of the menu that was chosen, 0 for none; no answer when it was cancelled.
    std::optional<quint32> do_modal(QWidget* parent);

private:
    class Page;

    Page* m_page;
};
