#pragma once

#include "json_reader.h"
#include "json_writer.h"
#include "status.h"
#include "value.h"

#include <limits>
#include <type_traits>

namespace tarn {

/// What may be stored in a field beyond its type. The defaults allow everything.
struct FieldRules {
    double minimum = std::numeric_limits<double>::lowest();
    double maximum = std::numeric_limits<double>::max();
    int max_length = std::numeric_limits<int>::max(); ///< of each text, in UTF-16 units
    bool read_only = false;                           ///< set by the object itself only
    bool picture = false;                             ///< the texts name pictures of the scene
    bool function = false;                            ///< the texts name functions of the scene
    bool derived = false;                             ///< follows from other fields and is not saved
    bool children = false;                            ///< a list of children, which is changed and saved with them
};

/// `text` cut to at most `units` UTF-16 units, never inside a character (surrogates and combining marks included).
QString cut_text(const QString& text, int units);

/// What a type of values is to fields, in one place. A new type needs a specialisation with
///
///     using Part = ...;                      ///< what it is made of: itself, or the elements of a list or map
///     static Value to_value(const T&);
///     static Status from_value(const Value&, const FieldRules&, T& out); ///< held to the rules; a failure keeps `out`
///     static void hold(const FieldRules&, T&);
///     static void write(const T&, JsonWriter&);
///     static Status read(JsonCursor&, T& out);
///     static void each_part(T&, Visit);      ///< calls visit(Part&) for each part; for a const T visit(const Part&)
///     static std::size_t kept_bytes(const T& kept, const T& other); ///< on the heap, not shared with `other`
///
/// Base classes below have what is alike. A kind of Value that is new needs room in Value and in the bridges to Lua.
template <class T>
struct FieldType;

namespace detail {

template <class T>
struct SingleType {
    using Part = T;

    static void hold(const FieldRules&, T&) {}
    static void write(const T& value, JsonWriter& writer) { writer.value(value); }
    static Status read(JsonCursor& cursor, T& out) { return cursor.read(out); }
    template <class Held, class Visit>
    static void each_part(Held& value, Visit&& visit)
    {
        visit(value);
    }
    static std::size_t kept_bytes(const T&, const T&) { return 0; }
};

template <class T>
struct NumberType : SingleType<T> {
    static Value to_value(T value);
    static Status from_value(const Value& value, const FieldRules& rules, T& out);
    static void hold(const FieldRules& rules, T& value);
};

constexpr std::size_t heap_header = 16; ///< bytes before the elements of a list or text

template <class E>
struct ListType {
    using Part = E;

    static void hold(const FieldRules& rules, QList<E>& list)
    {
        for (E& element : list)
            FieldType<E>::hold(rules, element);
    }
    static void write(const QList<E>& list, JsonWriter& writer)
    {
        writer.begin_array();
        for (const E& element : list)
            FieldType<E>::write(element, writer);
        writer.end_array();
    }
    static Status read(JsonCursor& cursor, QList<E>& out)
    {
        out.clear();
        return cursor.each_element([&](JsonCursor& element) { return FieldType<E>::read(element, out.emplaceBack()); });
    }
    template <class Held, class Visit>
    static void each_part(Held& list, Visit&& visit)
    {
        for (auto& element : list)
            visit(element);
    }
    static std::size_t kept_bytes(const QList<E>& kept, const QList<E>& other)
    {
        if (kept.isSharedWith(other) || kept.capacity() == 0)
            return 0;
        std::size_t bytes = heap_header + std::size_t(kept.capacity()) * sizeof(E);
        for (qsizetype i = 0; i < kept.size(); ++i)
            bytes += FieldType<E>::kept_bytes(kept[i], i < other.size() ? other[i] : E());
        return bytes;
    }
};

} // namespace detail

template <>
struct FieldType<bool> : detail::SingleType<bool> {
    static Value to_value(bool value) { return value; }
    static Status from_value(const Value& value, const FieldRules& rules, bool& out);
};

template <>
struct FieldType<int> : detail::NumberType<int> {
};

template <>
struct FieldType<quint32> : detail::NumberType<quint32> {
};

template <>
struct FieldType<float> : detail::NumberType<float> {
};

template <>
struct FieldType<QString> : detail::SingleType<QString> {
    static Value to_value(const QString& value) { return value; }
    static Status from_value(const Value& value, const FieldRules& rules, QString& out);
    static void hold(const FieldRules& rules, QString& value);
    static std::size_t kept_bytes(const QString& kept, const QString& other)
    {
        return kept.isSharedWith(other) || kept.capacity() == 0
            ? 0
            : detail::heap_header + std::size_t(kept.capacity()) * sizeof(QChar);
    }
};

template <>
struct FieldType<ObjectRef> : detail::SingleType<ObjectRef> {
    static Value to_value(ObjectRef value) { return value; }
    static Status from_value(const Value& value, const FieldRules& rules, ObjectRef& out); ///< of a number, too
    static void write(ObjectRef value, JsonWriter& writer) { writer.value(value.id); }
    static Status read(JsonCursor& cursor, ObjectRef& out) { return cursor.read(out.id); }
};

namespace detail {

/// Values by name. An entry that holds nothing (an empty text, 0) is none.
template <class E>
struct MapType {
    using Part = E;
    using Map = QMap<QString, E>;

    static void hold(const FieldRules& rules, Map& map)
    {
        for (auto entry = map.begin(); entry != map.end();) {
            FieldType<E>::hold(rules, *entry);
            entry = *entry == E() ? map.erase(entry) : std::next(entry);
        }
    }
    static void write(const Map& map, JsonWriter& writer)
    {
        writer.begin_object();
        for (auto entry = map.begin(); entry != map.end(); ++entry) {
            writer.text_key(entry.key());
            FieldType<E>::write(*entry, writer);
        }
        writer.end_object();
    }
    static Status read(JsonCursor& cursor, Map& out);
    template <class Held, class Visit>
    static void each_part(Held& map, Visit&& visit)
    {
        for (auto& value : map)
            visit(value);
    }
    static std::size_t kept_bytes(const Map& kept, const Map& other)
    {
        if (kept.isSharedWith(other))
            return 0;
        std::size_t bytes = 0;
        for (auto entry = kept.begin(); entry != kept.end(); ++entry) {
            const auto same = other.find(entry.key());
            const bool there = same != other.end();
            bytes += 4 * sizeof(void*) + sizeof(QString) + sizeof(E);
            bytes += FieldType<QString>::kept_bytes(entry.key(), there ? same.key() : QString());
            bytes += FieldType<E>::kept_bytes(*entry, there ? *same : E());
        }
        return bytes;
    }
};

} // namespace detail

template <>
struct FieldType<QStringList> : detail::ListType<QString> {
    static Value to_value(const QStringList& value) { return value; }
    static Status from_value(const Value& value, const FieldRules& rules, QStringList& out);
};

template <>
struct FieldType<QList<quint32>> : detail::ListType<quint32> {
    static Value to_value(const QList<quint32>& value) { return NumberList(value.begin(), value.end()); }
    static Status from_value(const Value& value, const FieldRules& rules, QList<quint32>& out);
};

template <>
struct FieldType<IdList> : detail::ListType<ObjectRef> {
    static Value to_value(const IdList& value) { return value; }
    static Status from_value(const Value& value, const FieldRules& rules, IdList& out); ///< of numbers, too
};

template <>
struct FieldType<TextMap> : detail::MapType<QString> {
    static Value to_value(const TextMap& value) { return value; }
    static Status from_value(const Value& value, const FieldRules& rules, TextMap& out);
};

template <>
struct FieldType<QMap<QString, quint32>> : detail::MapType<quint32> {
    static Value to_value(const QMap<QString, quint32>& value);
    static Status from_value(const Value& value, const FieldRules& rules, QMap<QString, quint32>& out);
};

} // namespace tarn
