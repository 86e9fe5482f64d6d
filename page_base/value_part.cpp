#include "value_part.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr qint64 byte_mask = 0xff;

/// What is as if it were not there is not there.
template <class Map>
void put(Map& map, const char* name, const typename Map::mapped_type& content)
{
    if (content == typename Map::mapped_type())
        map.remove(QLatin1String(name));
    else
        map.insert(QLatin1String(name), content);
}

template <class List>
void put(List& list, int index, const typename List::value_type& content)
{
    if (index >= list.size())
        list.resize(index + 1);
    list[index] = content;
}

} // namespace

double number_of(const Value& value)
{
    if (const auto* whole = std::get_if<qint64>(&value))
        return double(*whole);
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag;
    if (const auto* object = std::get_if<ObjectRef>(&value))
        return object->id;
    return value_as<double>(value);
}

Value part_of(const Value& value, Part part)
{
    if (part.is_none())
        return {};
    switch (part.of) {
    case Part::Of::Whole: break;
    case Part::Of::Channel: return qint64(number_of(value)) >> part.index & byte_mask;
    case Part::Of::Item:
        if (const auto* texts = std::get_if<QStringList>(&value))
            return texts->value(part.index);
        if (const auto* numbers = std::get_if<NumberList>(&value))
            return numbers->value(part.index);
        return {};
    case Part::Of::Entry:
        if (const auto* texts = std::get_if<TextMap>(&value))
            return texts->value(QLatin1String(part.name));
        if (const auto* numbers = std::get_if<NumberMap>(&value))
            return numbers->value(QLatin1String(part.name));
        return {};
    }
    return value;
}

Value with_part(Value value, Part part, const Value& content)
{
    if (part.is_none())
        return value;
    switch (part.of) {
    case Part::Of::Whole: return content;
    case Part::Of::Channel: {
        const auto byte = qint64(std::clamp(number_of(content), 0.0, double(byte_mask)));
        return (qint64(number_of(value)) & ~(byte_mask << part.index)) | byte << part.index;
    }
    case Part::Of::Item:
        if (auto* texts = std::get_if<QStringList>(&value))
            put(*texts, part.index, value_as<QString>(content));
        else if (auto* numbers = std::get_if<NumberList>(&value))
            put(*numbers, part.index, number_of(content));
        return value;
    case Part::Of::Entry:
        if (auto* texts = std::get_if<TextMap>(&value))
            put(*texts, part.name, value_as<QString>(content));
        else if (auto* numbers = std::get_if<NumberMap>(&value))
            put(*numbers, part.name, number_of(content));
        return value;
    }
    return value;
}

} // namespace tarn
