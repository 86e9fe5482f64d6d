#include "journal.h"
#include "authored.h"

#include "document.h"
#include "model_object.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr std::size_t usual_state_size = 256; ///< bytes

std::size_t bytes_kept(const ObjectState& kept, const ObjectState& other)
{
    std::size_t bytes = usual_state_size;
    for (const FieldBase* field : kept.fields().heap_fields())
        bytes += field->kept_bytes(kept, other);
    return bytes;
}

/// About what an entry costs: what its state does not share with the present one. Of an object that the step removed
/// the step keeps all.
std::size_t bytes_kept(const Journal::Entry& entry)
{
    const ObjectState& now = Authored::state(*entry.object);
    const ObjectKind* kind = entry.object->kind();
    if (!kind || entry.state->parent.id == 0 || now.parent.id != 0)
        return bytes_kept(*entry.state, now);
    const FieldBase* type = kind->saves_type ? now.fields().find("type") : nullptr;
    const Value value = type ? type->get(now) : Value();
    const auto* number = std::get_if<qint64>(&value);
    const StatePtr fresh(kind->make_state(number ? int(*number) : -1));
    return bytes_kept(*entry.state, fresh ? *fresh : now);
}

} // namespace

void Journal::begin(const QString& name, const QByteArray& merge_key, Merging merging)
{
    if (m_depth++ > 0)
        return;
    close_step();
    m_open.name = name;
    m_open.merge_key = merge_key;
    m_open.merging = merging;
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

StatePtr Journal::note(ModelObject& object, const StatePtr& before)
{
    const std::size_t index = m_open.entries.size();
    m_open.entries.push_back({&object, before});
    if (m_open.merging == Merging::Adds || !goes_on())
        return {};
    const auto& last = m_steps.back().entries;
    return index < last.size() && last[index].object == &object ? last[index].state : StatePtr();
}

void Journal::add_side_effect(std::unique_ptr<SideEffect> side_effect)
{
    if (m_recording)
        m_open.side_effects.push_back(std::move(side_effect));
}

/// Whether the open step may become part of the last one, as far as one can tell before it ends.
bool Journal::goes_on() const
{
    return !m_merge_broken && !m_open.merge_key.isEmpty() && m_open.side_effects.empty() && m_position > 0
        && m_position == m_steps.size() && m_saved_at != m_position && m_steps.back().merge_key == m_open.merge_key;
}

bool Journal::merges_into_last() const
{
    if (!goes_on())
        return false;
    const auto& last = m_steps.back().entries;
    const auto is_same = [](const Entry& a, const Entry& b) { return a.object == b.object; };
    if (m_open.merging == Merging::Replaces)
        return std::equal(last.begin(), last.end(), m_open.entries.begin(), m_open.entries.end(), is_same);
    // What adds to the step before may touch less: the first letter that is typed can make an object that the next ones
    // only change.
    auto place = last.begin();
    for (const Entry& entry : m_open.entries) {
        place = std::find_if(place, last.end(), [&](const Entry& kept) { return is_same(kept, entry); });
        if (place == last.end())
            return false;
        ++place;
    }
    return true;
}

void Journal::close_step()
{
    if (m_open.is_empty())
        return;
    const bool merges = merges_into_last();
    Step step = std::move(m_open);
    m_open = {};
    ++m_serial;
    if (!merges) {
        if (m_saved_at != never && m_saved_at > m_position)
            m_saved_at = never;
        drop_undone();
        step.number = m_serial;
        step.bytes = sizeof(Step);
        for (const Entry& entry : step.entries)
            step.bytes += bytes_kept(entry);
        m_bytes += step.bytes;
        m_steps.push_back(std::move(step));
        m_position = m_steps.size();
        hold_budget();
    }
    m_merge_broken = false;
    if (on_changed)
        on_changed();
}

void Journal::set_budget(std::size_t bytes)
{
    m_budget = bytes;
    hold_budget();
}

void Journal::hold_budget()
{
    std::size_t gone = 0;
    while (m_bytes > m_budget && gone + 1 < m_steps.size() && gone < m_position)
        m_bytes -= m_steps[gone++].bytes;
    if (gone == 0)
        return;
    m_steps.erase(m_steps.begin(), m_steps.begin() + std::ptrdiff_t(gone));
    m_position -= gone;
    m_saved_at = m_saved_at == never || m_saved_at < gone ? never : m_saved_at - gone;
    m_dropped = true;
    m_document.drop_unreachable();
}

void Journal::exchange(Step& step)
{
    for (Entry& entry : step.entries) {
        ModelObject& object = *entry.object;
        m_document.changes().touch(object, object.m_shown ? object.m_shown->state : object.m_state);
        object.swap_state(entry.state);
    }
    for (const auto& side_effect : step.side_effects)
        side_effect->exchange();
    // Only now: what an object works out from its state may hang on those of others.
    for (const Entry& entry : step.entries) {
        if (entry.object->m_shown)
            entry.object->follow_authored();
        entry.object->refresh_links();
    }
    for (const Entry& entry : step.entries)
        entry.object->state_changed();
}

void Journal::drop_undone()
{
    for (std::size_t step = m_position; step < m_steps.size(); ++step)
        m_bytes -= m_steps[step].bytes;
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
bool Journal::can_travel()
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
    if (!can_travel() || m_position == 0)
        return false;
    undo_one();
    travelled();
    return true;
}

bool Journal::redo()
{
    if (!can_travel() || m_position == m_steps.size())
        return false;
    redo_one();
    travelled();
    return true;
}

bool Journal::go_to(std::size_t position)
{
    if (!can_travel())
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

void Journal::each_kept(const std::function<void(ModelObject&)>& visit) const
{
    for (const Step& step : m_steps)
        for (const Entry& entry : step.entries)
            visit(*entry.object);
    for (const Entry& entry : m_open.entries)
        visit(*entry.object);
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
    m_bytes = 0;
    m_dropped = false;
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
