#pragma once

#include <QTableView>

#include <functional>

/// The cells of a table of texts, for who types them one after the other: Enter goes on to the row below, Tab to the next
/// cell that can be written; Delete, and the keys of the clipboard, are for the cells that are selected.
class CTranslationView : public QTableView {
    Q_OBJECT

public:
    using QTableView::QTableView;

    /// Does something with several cells as one step.
    std::function<void(const std::function<void()>& change)> in_one_step;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    bool take_key(const QKeyEvent& event);
    void clear_cells();
    void copy_cells() const;
    void paste_cells();
};
