#pragma once

#include <QDialog>

#include <optional>

class CConfigScene;

/// The modal dialog in which one of the scene's functions is chosen, or a new one.
class CDlgFunctionPick : public QDialog {
    Q_OBJECT

public:
    /// `current` is the name of the function to begin with; empty for none.
    CDlgFunctionPick(const CConfigScene& functions, const QString& current);

    /// Runs the dialog over `parent`. The function's name, which need not be one of the scene's; empty for a new function
    /// of any name. No answer when it was cancelled.
    std::optional<QString> do_modal(QWidget* parent);

private:
    class Page;

    Page* m_page;
};
