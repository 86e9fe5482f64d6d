#include "field.h"

#include "language.h"
#include "utf8.h"

#include <algorithm>
#include <bitset>

namespace tarn {

int FieldTable::index_of(std::string_view name, int hint) const
{
    const int count = static_cast<int>(m_fields.size());
    for (int i = 0; i < count; ++i) {
        const int index = (hint + i) % count;
        if (name == m_names[static_cast<std::size_t>(index)])
            return index;
    }
    return -1;
}

const FieldBase* FieldTable::find(std::string_view name) const
{
    const int index = index_of(name);
    return index < 0 ? nullptr : m_fields[static_cast<std::size_t>(index)];
}

const FieldBase* FieldTable::find(FieldKey key) const
{
    const auto found = std::find(m_keys.begin(), m_keys.end(), key);
    return found == m_keys.end() ? nullptr : m_fields[static_cast<std::size_t>(found - m_keys.begin())];
}

void FieldTable::add(std::unique_ptr<FieldBase> field)
{
    m_fields.push_back(field.get());
    m_names.emplace_back(field->name());
    m_keys.push_back(field->key());
    if (field->has_heap())
        m_heap_fields.push_back(field.get());
    if (field->has_links())
        m_link_fields.push_back(field.get());
    m_own.push_back(std::move(field));
}

void write_members(const ObjectState& state, JsonWriter& writer)
{
    for (const FieldBase* field : state.fields()) {
        if (field->rules().derived || field->is_default(state))
            continue;
        writer.key(field->name());
        field->write(state, writer);
    }
}

void write_state(const ObjectState& state, JsonWriter& writer)
{
    writer.begin_object();
    write_members(state, writer);
    for (const auto& [name, json] : state.unknown)
        writer.raw_member(name, {json.constData(), static_cast<std::size_t>(json.size())});
    writer.end_object();
}

Status read_member(ObjectState& state, std::string_view key, JsonCursor& value)
{
    if (const FieldBase* field = state.fields().find(key); field && !field->rules().children)
        return field->read(state, value);
    QByteArray json;
    auto status = value.read_raw(json);
    state.unknown.append({from_utf8(key), json});
    return status;
}

static Status read_members(ObjectState& state, JsonCursor& cursor)
{
    const FieldTable& table = state.fields();
    std::bitset<256> seen;
    int hint = 0;
    return cursor.each_member([&](std::string_view key, JsonCursor& value) {
        const int index = table.index_of(key, hint);
        if (index < 0 || table.at(static_cast<std::size_t>(index))->rules().children) {
            QByteArray json;
            auto status = value.read_raw(json);
            state.unknown.append({from_utf8(key), json});
            return status;
        }
        hint = index + 1;
        if (seen.test(static_cast<std::size_t>(index)))
            return value.fail(lang(u"\"%1\" 出现了两次", u"\"%1\" appears twice")
                                  .arg(QString::fromLatin1(table.at(static_cast<std::size_t>(index))->name())));
        seen.set(static_cast<std::size_t>(index));
        auto status = table.at(static_cast<std::size_t>(index))->read(state, value);
        if (status)
            return status;
        return Status::error(
            QStringLiteral("%1 (\"%2\")")
                .arg(status.message(), QString::fromLatin1(table.at(static_cast<std::size_t>(index))->name())));
    });
}

Status read_state(ObjectState& state, JsonCursor& cursor)
{
    auto status = read_members(state, cursor);
    if (status)
        state.settle(WrittenFields::whole());
    return status;
}

} // namespace tarn
