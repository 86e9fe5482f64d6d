#pragma once

#include <QtGlobal>

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

namespace tarn {

class Journal;
struct SelectionRecord;

/// What was selected at some time, by ids: the objects may go and come again.
struct KeptSelection {
    bool controls_selected = false;
    quint32 current_dialog = 0; ///< 0 for none
    quint32 current_control = 0;
    std::vector<quint32> dialogs; ///< in selection order
    std::vector<quint32> controls;
};

/// What was selected before and after each step of the journal, so that undo and redo bring it back. Selecting is no
/// step; whoever changes the selection tells before, and the steps that were made since the last time had this one.
class SelectionHistory {
public:
    using Kept = std::shared_ptr<const KeptSelection>;

    explicit SelectionHistory(const Journal& journal) : m_journal(journal) {}

    /// The selection, `now` as it is, is about to change.
    void before_change(const SelectionRecord& now);
    /// Objects come or go in the present step, which may select what it made.
    void before_structure(const SelectionRecord& now);
    /// The history may have been forgotten.
    void forget_steps();
    /// The journal undid or did again the step of that number, 0 for one that was cancelled. Answers what was selected
    /// before or after it; null where that is not known.
    Kept travelled(std::size_t step_number, const SelectionRecord& now);

private:
    struct Ends {
        Kept before;
        Kept after;
    };

    const Kept& kept(const SelectionRecord& now);
    void follow_steps(const SelectionRecord& now);

    const Journal& m_journal;
    std::map<std::size_t, Ends> m_steps; ///< by number; some of them may be gone from the journal
    std::size_t m_last_step = 0;         ///< the newest step that is known
    Kept m_now;                          ///< the present selection; null: not worked out since it changed
    Kept m_before_open; ///< the selection before the present step changed what there is; null: it did not
};

} // namespace tarn
