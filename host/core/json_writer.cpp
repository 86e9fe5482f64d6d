#include "json_writer.h"

#include <QByteArray>

namespace tarn {

void JsonWriter::open(char bracket)
{
    separate();
    m_text += bracket;
    m_needs_comma = false;
}

void JsonWriter::close(char bracket)
{
    if (m_pending_line)
        m_text += '\n';
    m_pending_line = false;
    m_text += bracket;
    m_needs_comma = true;
}

void JsonWriter::separate()
{
    if (m_after_key) {
        m_after_key = false;
        m_needs_comma = true;
        return;
    }
    if (m_needs_comma)
        m_text += ',';
    if (m_pending_line)
        m_text += '\n';
    m_pending_line = false;
    m_needs_comma = true;
}

void JsonWriter::key(std::string_view key)
{
    separate();
    m_text += '"';
    m_text += key;
    m_text += "\":";
    m_after_key = true;
}

void JsonWriter::text_key(const QString& key)
{
    separate();
    string(key);
    m_text += ':';
    m_after_key = true;
}

void JsonWriter::value(bool value)
{
    raw(value ? "true" : "false");
}

void JsonWriter::value(const QString& value)
{
    separate();
    string(value);
}

void JsonWriter::raw(std::string_view json)
{
    separate();
    m_text += json;
}

void JsonWriter::raw_member(const QString& name, std::string_view json)
{
    text_key(name);
    raw(json);
}

void JsonWriter::string(const QString& text)
{
    static constexpr char hex[] = "0123456789abcdef";
    m_text += '"';
    const QByteArray utf8 = text.toUtf8();
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            m_text += '\\';
            m_text += c;
        } else if (byte >= 0x20) {
            m_text += c;
        } else if (c == '\n') {
            m_text += "\\n";
        } else if (c == '\t') {
            m_text += "\\t";
        } else {
            m_text += "\\u00";
            m_text += hex[byte >> 4];
            m_text += hex[byte & 15];
        }
    }
    m_text += '"';
}

} // namespace tarn
