#pragma once

#include "commands/command.h"
#include "commands/three_way_merge.h"

#include <QDialog>

class QPlainTextEdit;
class QRadioButton;
class QTreeWidget;

namespace tarn {

/// The conflicts of a merge: what the base, our version and theirs have, and which of the two is taken, for each. Where
/// nothing was chosen it is ours.
class MergeWindow : public QDialog {
    Q_OBJECT

public:
    explicit MergeWindow(const std::vector<MergeConflict>& conflicts);

    /// By the conflicts.
    const std::vector<MergeSide>& sides() const { return m_sides; }

private:
    void make_list();
    QLayout* make_versions();
    QLayout* make_buttons();
    void show_conflict(int index);
    void choose(MergeSide side);
    void choose_all(MergeSide side);
    void show_side(int index);
    int current() const;

    std::vector<MergeConflict> m_conflicts;
    std::vector<MergeSide> m_sides;
    QTreeWidget* m_list;
    QPlainTextEdit* m_base;
    QPlainTextEdit* m_ours;
    QPlainTextEdit* m_theirs;
    QRadioButton* m_take_ours;
    QRadioButton* m_take_theirs;
};

/// Shows the window; none when it was cancelled.
std::optional<std::vector<MergeSide>> ask_in_window(const std::vector<MergeConflict>& conflicts);

} // namespace tarn
