#pragma once

#include <QHash>
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
    QString text{};   ///< result, print or error
    int line = 0;     ///< of the function that is to blame; 0 for none
    quint64 call = 0; ///< the call whose end is not told yet, as ScriptResult has it; 0: there is none
};

/// The newest of these entries, oldest first.
class ScriptLog {
public:
    static constexpr std::size_t max_entries = 10'000;

    const std::deque<ScriptLogEntry>& entries() const { return m_entries; }
    /// How many were ever added since the log was cleared; entries() holds the last of them.
    std::size_t added() const { return m_added; }
    void add(ScriptLogEntry entry);
    /// The call is over: its entry says so now, where the log still has it.
    void end_call(quint64 call, const QString& text);
    void clear();

    /// Called after each entry, after one that was changed and after clear().
    std::function<void()> on_changed;

private:
    std::deque<ScriptLogEntry> m_entries;
    std::size_t m_added = 0;
    QHash<quint64, std::size_t> m_calls; ///< that are not over: which of all that were ever added tells of them
};

} // namespace tarn
