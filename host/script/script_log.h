#pragma once

#include <QString>

#include <deque>
#include <functional>

namespace tarn {

/// What a running scene tells its author: an event that a function answered, a print, an error.
struct ScriptLogEntry {
    enum class Kind { Result, Print, Error };

    Kind kind = Kind::Result;
    double time = 0; ///< seconds since the scene began to run
    QString object{};
    QString event{};
    QString function{};
    QString text{}; ///< result, print or error
    int line = 0;   ///< of the function that is to blame; 0 for none
};

/// The newest of these entries, oldest first.
class ScriptLog {
public:
    static constexpr std::size_t max_entries = 10'000;

    const std::deque<ScriptLogEntry>& entries() const { return m_entries; }
    /// How many were ever added since the log was cleared; entries() holds the last of them.
    std::size_t added() const { return m_added; }
    void add(ScriptLogEntry entry)
    {
        if (m_entries.size() == max_entries)
            m_entries.pop_front();
        m_entries.push_back(std::move(entry));
        ++m_added;
        if (on_changed)
            on_changed();
    }
    void clear()
    {
        m_entries.clear();
        m_added = 0;
        if (on_changed)
            on_changed();
    }

    /// Called after each entry and after clear().
    std::function<void()> on_changed;

private:
    std::deque<ScriptLogEntry> m_entries;
    std::size_t m_added = 0;
};

} // namespace tarn
