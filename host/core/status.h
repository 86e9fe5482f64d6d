#pragma once

#include <QString>

#include <optional>
#include <utility>

namespace tarn {

/// How an operation ended: well, or with a message for a person (what, where, what to do).
class [[nodiscard]] Status {
public:
    Status() = default;
    static Status error(QString message) { return Status(std::move(message)); }

    bool ok() const { return m_message.isNull(); }
    explicit operator bool() const { return ok(); }
    const QString& message() const { return m_message; } ///< null when all went well

private:
    explicit Status(QString message) : m_message(message.isNull() ? QStringLiteral("?") : std::move(message)) {}
    QString m_message;
};

/// A value, or the Status that tells why there is none.
template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) // NOLINT: a value is a good result
        : m_value(std::move(value))
    {
    }
    Result(Status status) // NOLINT: so is a failure
        : m_status(std::move(status))
    {
    }

    bool ok() const { return m_value.has_value(); }
    explicit operator bool() const { return ok(); }
    T& value() { return *m_value; }
    const T& value() const { return *m_value; }
    const Status& status() const { return m_status; }

private:
    std::optional<T> m_value;
    Status m_status;
};

} // namespace tarn
