#pragma once

#include "object_state.h"

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace tarn {

class Document;
class ModelObject;

/// Undo and redo of the model. Before an object's state is first changed inside a user action the journal keeps the
/// old state; a step is the list of those. States are shared, so keeping one costs a reference until it is written.
///
/// A change made outside any action is a step of its own that ends where the next action begins.
///
/// What the steps keep is bounded in bytes: over it the oldest steps go, and with them the removed objects that only they
/// could bring back.
class Journal {
public:
    static constexpr std::size_t default_budget = std::size_t(256) << 20;

    explicit Journal(Document& document) : m_document(document) {}

    struct Entry {
        ModelObject* object;
        StatePtr state; ///< before the step while it is done, after it while it is undone
    };
    /// Something beside the objects' states that a step changed.
    class SideEffect {
    public:
        virtual ~SideEffect() = default;
        /// Exchanges what is there now with what is kept: undoes it, and the next time does it again.
        virtual void exchange() = 0;
    };
    /// What a step that merges does with what the steps before it wrote: adds to it, or takes its place. Of what is typed
    /// the last state counts: 120 passes 1 and 12, and what rules made of these is to leave nothing behind.
    enum class Merging { Adds, Replaces };
    struct Step {
        QString name;
        QByteArray merge_key;
        Merging merging = Merging::Adds;
        std::vector<Entry> entries;
        std::vector<std::unique_ptr<SideEffect>> side_effects;
        std::size_t number = 0;
        std::size_t bytes = 0; ///< about what it keeps

        bool is_empty() const { return entries.empty() && side_effects.empty(); }
    };

    /// Called after undo, redo and each finished step: the title and the Edit menu follow it.
    std::function<void()> on_changed;
    /// Called after undo and redo with the step whose objects took another state.
    std::function<void(const Step&)> on_restored;

    /// Actions nest; only the outermost makes a step. A step whose non-empty `merge_key` and objects equal those of
    /// the step before it (typing into one field, for example) becomes part of that one.
    void begin(const QString& name, const QByteArray& merge_key = {}, Merging merging = Merging::Adds);
    void end();
    /// Undoes what the running outermost action did so far and ends it without a step.
    void cancel();
    /// What the running action did beside the objects becomes part of its step. Dropped while recording is off.
    void add_side_effect(std::unique_ptr<SideEffect> side_effect);
    /// The next step stays separate even if its merge key is the same.
    void break_merge() { m_merge_broken = true; }
    bool in_action() const { return m_depth > 0; }

    bool can_undo() const;
    bool can_redo() const;
    /// False when there was no step, inside an action, and while recording is off.
    bool undo();
    bool redo();
    QString undo_name() const;
    QString redo_name() const;

    /// How many bytes the steps may keep; the newest one stays whatever it keeps.
    void set_budget(std::size_t bytes);
    /// Whether steps were dropped to hold the budget since the history was last cleared.
    bool has_dropped() const { return m_dropped; }

    // The steps that are kept, oldest first. A change that no action made yet is none of them.
    std::size_t step_count() const { return m_steps.size(); }
    const QString& step_name(std::size_t index) const { return m_steps[index].name; }
    /// Not used again for another step: who knows a step by its number sees whether it is still there.
    std::size_t step_number(std::size_t index) const { return m_steps[index].number; }
    /// How many steps are done; those from here on are undone.
    std::size_t position() const { return m_position; }
    /// Undoes or redoes until `position` steps are done, at most step_count(); on_changed comes once. False when
    /// nothing was to be done, inside an action, and while recording is off.
    bool go_to(std::size_t position);

    /// Forgets everything; the current state counts as saved.
    void clear();
    void mark_saved();
    /// Something that is saved, but not undone, was changed: nothing but saving makes the document unchanged again.
    void changed_outside();
    bool is_saved() const;

    /// Calls `visit` for each object that a step can bring back.
    void each_kept(const std::function<void(ModelObject&)>& visit) const;

    /// Changes are not recorded while recording is off (loading, for example).
    void set_recording(bool on) { m_recording = on; }
    bool recording() const { return m_recording; }

private:
    friend class ModelObject;
    /// Answers the state of the object from before the last step when what is done now takes the place of that step; else
    /// null.
    StatePtr note(ModelObject& object, const StatePtr& before);
    std::size_t serial() const { return m_serial; }
    void close_step();
    void exchange(Step& step);
    bool can_travel();
    bool goes_on() const;
    void hold_budget();
    void undo_one();
    void redo_one();
    void travelled();
    bool merges_into_last() const;
    void drop_undone();

    static constexpr std::size_t never = static_cast<std::size_t>(-1);

    Document& m_document;
    std::vector<Step> m_steps;
    std::size_t m_budget = default_budget;
    std::size_t m_bytes = 0; ///< of all steps
    bool m_dropped = false;
    std::size_t m_position = 0; ///< number of steps that are done
    std::size_t m_saved_at = 0; ///< m_position when last saved; `never` once that state cannot be reached
    std::size_t m_serial = 1;   ///< grows with each step; an object remembers in which one it was noted
    Step m_open;
    int m_depth = 0;
    bool m_merge_broken = false;
    bool m_recording = true;
};

/// A user action for the length of a scope.
class UserAction {
public:
    explicit UserAction(Journal& journal, const QString& name = {}, const QByteArray& merge_key = {},
                        Journal::Merging merging = Journal::Merging::Adds)
        : m_journal(journal)
    {
        m_journal.begin(name, merge_key, merging);
    }
    ~UserAction() { m_journal.end(); }
    UserAction(const UserAction&) = delete;
    UserAction& operator=(const UserAction&) = delete;

private:
    Journal& m_journal;
};

/// Turns recording off for the length of a scope.
class RecordingOff {
public:
    explicit RecordingOff(Journal& journal) : m_journal(journal), m_before(journal.recording())
    {
        m_journal.set_recording(false);
    }
    ~RecordingOff() { m_journal.set_recording(m_before); }
    RecordingOff(const RecordingOff&) = delete;
    RecordingOff& operator=(const RecordingOff&) = delete;

private:
    Journal& m_journal;
    bool m_before;
};

} // namespace tarn
