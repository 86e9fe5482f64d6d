#include "journal.h"

#include "model_object.h"

#include <algorithm>

namespace tarn {

void Journal::begin(const QString& name, const QByteArray& merge_key)
{
    if (m_depth++ > 0)
        return;
    close_step();
    m_open.name = name;
    m_open.merge_key = merge_key;
}

void Journal::end()
{
    if (--m_depth == 0)
        close_step();
}

void Journal::cancel()
{
    if (m_open.is_empty())
        return;
    exchange(m_open);
    const Step undone = std::move(m_open);
    m_open = {};
    ++m_serial;
    if (on_restored)
        on_restored(undone);
}

void Journal::note(ModelObject& object, const StatePtr& before)
{
    if (!m_recording)
        return;
    m_open.entries.push_back({&object, before});
}

void Journal::add_companion(std::unique_ptr<Companion> companion)
{
    if (m_recording)
        m_open.companions.push_back(std::move(companion));
}

bool Journal::merges_into_last(const Step& step) const
{
    if (m_merge_broken || step.merge_key.isEmpty() || !step.companions.empty() || m_position == 0
        || m_position != m_steps.size() || m_saved_at == m_position)
        return false;
    const Step& last = m_steps.back();
    return last.merge_key == step.merge_key
        && std::equal(last.entries.begin(), last.entries.end(), step.entries.begin(), step.entries.end(),
                      [](const Entry& a, const Entry& b) { return a.object == b.object; });
}

void Journal::close_step()
{
    if (m_open.is_empty())
        return;
    Step step = std::move(m_open);
    m_open = {};
    ++m_serial;
    if (!merges_into_last(step)) {
        if (m_saved_at != never && m_saved_at > m_position)
            m_saved_at = never;
        drop_undone();
        step.number = m_serial;
        m_steps.push_back(std::move(step));
        m_position = m_steps.size();
    }
    m_merge_broken = false;
    if (on_changed)
        on_changed();
}

void Journal::swap_states(std::vector<Entry>& entries)
{
    walk(
        entries, [](Entry& entry) { entry.object->swap_state(entry.state); }, &Entry::object);
    // Only now: what an object works out from its state may hang on those of others.
    walk(
        entries, [](Entry& entry) { entry.object->state_changed(); }, &Entry::object);
}

void Journal::exchange(Step& step)
{
    swap_states(step.entries);
    for (const auto& companion : step.companions)
        companion->exchange();
}

void Journal::drop_undone()
{
    constexpr std::size_t ahead = 8;
    for (std::size_t step = m_position; step < m_steps.size(); ++step) {
        auto& entries = m_steps[step].entries;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (i + ahead < entries.size())
                prefetch(entries[i + ahead].state.constData(), ObjectState::usual_size);
            entries[i].state.reset();
        }
    }
    m_steps.resize(m_position);
}

bool Journal::can_undo() const
{
    return m_depth == 0 && m_recording && (m_position > 0 || !m_open.is_empty());
}

bool Journal::can_redo() const
{
    return m_depth == 0 && m_recording && m_position < m_steps.size() && m_open.is_empty();
}

/// Whether undo and redo are possible now; a change outside any action has become a step then.
bool Journal::may_travel()
{
    if (m_depth > 0 || !m_recording)
        return false;
    close_step();
    return true;
}

void Journal::undo_one()
{
    Step& step = m_steps[--m_position];
    exchange(step);
    if (on_restored)
        on_restored(step);
}

void Journal::redo_one()
{
    Step& step = m_steps[m_position++];
    exchange(step);
    if (on_restored)
        on_restored(step);
}

void Journal::travelled()
{
    m_merge_broken = true;
    if (on_changed)
        on_changed();
}

bool Journal::undo()
{
    if (!may_travel() || m_position == 0)
        return false;
    undo_one();
    travelled();
    return true;
}

bool Journal::redo()
{
    if (!may_travel() || m_position == m_steps.size())
        return false;
    redo_one();
    travelled();
    return true;
}

bool Journal::go_to(std::size_t position)
{
    if (!may_travel())
        return false;
    const std::size_t wanted = std::min(position, m_steps.size());
    if (wanted == m_position)
        return false;
    while (m_position > wanted)
        undo_one();
    while (m_position < wanted)
        redo_one();
    travelled();
    return true;
}

QString Journal::undo_name() const
{
    if (!m_open.is_empty())
        return m_open.name;
    return m_position > 0 ? m_steps[m_position - 1].name : QString();
}

QString Journal::redo_name() const
{
    return m_open.is_empty() && m_position < m_steps.size() ? m_steps[m_position].name : QString();
}

void Journal::clear()
{
    m_steps.clear();
    m_open = {};
    m_position = 0;
    m_saved_at = 0;
    ++m_serial;
    if (on_changed)
        on_changed();
}

void Journal::mark_saved()
{
    if (m_depth == 0)
        close_step();
    m_saved_at = m_position;
    if (on_changed)
        on_changed();
}

void Journal::changed_outside()
{
    m_saved_at = never;
    if (on_changed)
        on_changed();
}

bool Journal::is_saved() const
{
    return m_saved_at == m_position && m_open.is_empty();
}

} // namespace tarn
