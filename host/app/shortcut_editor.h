#pragma once

#include "shortcuts.h"

#include <QDialog>

class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QTreeWidget;

namespace tarn {

class KeyField;

/// All commands with their keys: those are searched for, changed by pressing the new ones, and reset. What is changed is in
/// force at once.
class ShortcutEditor : public QDialog {
    Q_OBJECT

public:
    ShortcutEditor(QWidget* parent, Shortcuts& shortcuts);

private:
    void make_search();
    void make_list();
    QLayout* make_key_row();
    QLayout* make_buttons();
    const Shortcuts::Command* chosen() const; ///< null for none
    void narrow(const QString& text);
    void show_keys();
    void show_chosen();
    void press(const QKeySequence& keys);
    void set(const QKeySequence& keys);
    void reset_chosen();
    void reset_all();
    bool may_take(const QList<QKeySequence>& keys, const Shortcuts::Command& command);

    Shortcuts& m_shortcuts;
    QLineEdit* m_search = nullptr;
    QTreeWidget* m_list = nullptr;
    KeyField* m_keys = nullptr;
    QLabel* m_told = nullptr;
    QPushButton* m_none = nullptr;
    QPushButton* m_reset = nullptr;
};

} // namespace tarn
