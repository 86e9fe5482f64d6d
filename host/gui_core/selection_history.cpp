#include "selection_history.h"

#include "core/journal.h"
#include "dxut_control.h"
#include "dxut_dialog.h"
#include "selection_record.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tarn {

namespace {

quint32 id_of(const ModelObject* object)
{
    return object ? object->id() : 0;
}

template <class Object>
std::vector<quint32> ids_of(const std::vector<Object*>& objects)
{
    std::vector<quint32> ids;
    ids.reserve(objects.size());
    std::transform(objects.begin(), objects.end(), std::back_inserter(ids), id_of);
    return ids;
}

} // namespace

const SelectionHistory::Kept& SelectionHistory::kept(const SelectionRecord& now)
{
    if (!m_now)
        m_now = std::make_shared<KeptSelection>(KeptSelection{now.controls_selected, id_of(now.current_dialog),
                                                              id_of(now.current_control), ids_of(now.dialogs),
                                                              ids_of(now.controls)});
    return m_now;
}

/// The steps that are new have had the selection as it is; the first of them may have begun with another one.
void SelectionHistory::follow_steps(const SelectionRecord& now)
{
    const std::size_t count = m_journal.step_count();
    std::size_t first_new = count;
    while (first_new > 0 && m_journal.step_number(first_new - 1) > m_last_step)
        --first_new;
    if (first_new == count)
        return;
    m_steps.erase(m_steps.begin(), m_steps.lower_bound(m_journal.step_number(0)));
    const std::size_t last_known = first_new > 0 ? m_journal.step_number(first_new - 1) : 0;
    m_steps.erase(m_steps.upper_bound(last_known), m_steps.end()); // A new step took the place of undone ones.
    for (std::size_t step = first_new; step < count; ++step) {
        const Kept before = m_before_open ? std::exchange(m_before_open, nullptr) : kept(now);
        m_steps[m_journal.step_number(step)] = {before, kept(now)};
    }
    m_last_step = m_journal.step_number(count - 1);
}

void SelectionHistory::before_change(const SelectionRecord& now)
{
    follow_steps(now);
    m_now.reset();
}

void SelectionHistory::before_structure(const SelectionRecord& now)
{
    follow_steps(now);
    if (!m_before_open && m_journal.recording() && m_journal.in_action())
        m_before_open = kept(now);
}

void SelectionHistory::forget_steps()
{
    if (m_journal.step_count() > 0 || m_journal.in_action())
        return;
    m_steps.clear();
    m_before_open.reset();
}

SelectionHistory::Kept SelectionHistory::travelled(std::size_t step_number, const SelectionRecord& now)
{
    follow_steps(now);
    m_before_open.reset();
    const auto ends = m_steps.find(step_number);
    if (ends == m_steps.end())
        return nullptr;
    const std::size_t next = m_journal.position();
    const bool undone = next < m_journal.step_count() && m_journal.step_number(next) == step_number;
    return undone ? ends->second.before : ends->second.after;
}

} // namespace tarn
