#pragma once

#include <QString>

#include <charconv>
#include <string>
#include <string_view>
#include <type_traits>

namespace tarn {

/// Writes canonical JSON: no spaces, shortest numbers that read back the same, keys in the order in which they come.
/// The caller keeps brackets balanced.
class JsonWriter {
public:
    void begin_object() { open('{'); }
    void end_object() { close('}'); }
    void begin_array() { open('['); }
    void end_array() { close(']'); }
    void new_line() { m_pending_line = true; }

    /// The member's name; a value has to follow. `key` needs no escapes.
    void key(std::string_view key);
    void text_key(const QString& key); ///< the same of a name that may hold anything
    void value(bool value);
    void value(const QString& value);
    template <class T>
        requires(std::is_arithmetic_v<T> && !std::is_same_v<T, bool>)
    void value(T number)
    {
        separate();
        char digits[32];
        const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
        m_text.append(digits, end);
    }
    /// JSON text that is written as it stands.
    void raw(std::string_view json);
    /// A member whose name may hold anything.
    void raw_member(const QString& name, std::string_view json);

    std::string& text() { return m_text; }

private:
    void open(char bracket);
    void close(char bracket);
    void separate();
    void string(const QString& text);

    std::string m_text;
    bool m_needs_comma = false;
    bool m_after_key = false;
    bool m_pending_line = false;
};

} // namespace tarn
