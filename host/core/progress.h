#pragma once

#include "status.h"

#include <functional>

namespace tarn {

/// Where long work tells how far it is and asks whether to go on. A copy stands for the same work, or for a part of it.
class Progress {
public:
    /// Told how much is done, 0 to 1; answers whether to go on. It is called often, by the thread that works, and has to
    /// outlive the work. Once it has answered false it goes on doing so.
    using Tell = std::function<bool(double share)>;

    /// Nobody watches the work.
    Progress() = default;
    explicit Progress(const Tell& tell) : m_tell(&tell) {}

    bool is_watched() const { return m_tell != nullptr; }
    /// What is 0 to 1 of the answer is `from` to `to` of this work.
    Progress part(double from, double to) const
    {
        Progress part = *this;
        part.m_from = at(from);
        part.m_to = at(to);
        return part;
    }
    /// Whether the work is to go on; false: it leaves everything as it was and answers stopped().
    bool go_on(double share) const { return !m_tell || (*m_tell)(at(share)); }

private:
    double at(double share) const { return m_from + share * (m_to - m_from); }

    const Tell* m_tell = nullptr;
    double m_from = 0;
    double m_to = 1;
};

/// How work ends that was given up on the user's wish: a failure with an empty message, which no box shows.
inline Status stopped()
{
    return Status::error(QStringLiteral(""));
}

inline bool is_stopped(const Status& status)
{
    return !status && status.message().isEmpty();
}

} // namespace tarn
