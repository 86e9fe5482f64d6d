#include "script_log.h"

#include <utility>

namespace tarn {

void ScriptLog::add(ScriptLogEntry entry)
{
    if (m_entries.size() == max_entries) {
        m_calls.remove(m_entries.front().call);
        m_entries.pop_front();
    }
    if (entry.call)
        m_calls.insert(entry.call, m_added);
    m_entries.push_back(std::move(entry));
    ++m_added;
    if (on_changed)
        on_changed();
}

void ScriptLog::end_call(quint64 call, const QString& text)
{
    const auto known = m_calls.constFind(call);
    if (known == m_calls.constEnd())
        return;
    ScriptLogEntry& entry = m_entries[*known - (m_added - m_entries.size())];
    m_calls.erase(known);
    entry.call = 0;
    entry.text = text;
    if (on_changed)
        on_changed();
}

void ScriptLog::clear()
{
    m_entries.clear();
    m_calls.clear();
    m_added = 0;
    if (on_changed)
        on_changed();
}

} // namespace tarn
