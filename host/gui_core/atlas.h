#pragma once

#include "core/field_type.h"
#include "core/status.h"

#include <QByteArray>
#include <QImage>
#include <QRect>
#include <QSize>

#include <memory>

namespace tarn {

/// The picture from which the elements of a style are drawn. It is a value: copies share the picture that they began
/// with, and what was put into it since is kept cell by cell, so that a copy from before an edit costs some kilobytes.
/// Places are pixels. Straight alpha everywhere.
class Atlas {
public:
    static constexpr int width = 1024;      ///< pixels of every atlas
    static constexpr int max_height = 8192; ///< pixels

    Atlas() = default; ///< none
    explicit Atlas(const QImage& picture);
    /// From a lossless picture of a package, which counts as hostile.
    static Result<Atlas> read(const QByteArray& png);
    /// That of the skin that comes with the program, with a picture of its own for every part.
    static const Atlas& of_program();

    bool is_null() const { return !m_data; }
    QSize size() const;
    QImage picture() const;
    /// A part of the picture; what lies outside is transparent.
    QImage part(const QRect& rect) const;
    /// Puts `content` into the top left of `cell`, which becomes transparent otherwise. Cells do not overlap.
    void put(const QRect& cell, const QImage& content);
    /// Encoded; the same bytes for the same atlas.
    QByteArray png() const;

    bool is_shared_with(const Atlas& other) const { return m_data == other.m_data; }
    bool operator==(const Atlas& other) const;
    /// About how many bytes this keeps that `other` does not.
    std::size_t bytes_beside(const Atlas& other) const;

private:
    struct Data;

    std::shared_ptr<const Data> m_data;
};

/// An atlas goes into packages as a picture of its own, not with the fields, and is no value for automation.
template <>
struct FieldType<Atlas> : detail::SingleType<Atlas> {
    static Value to_value(const Atlas&) { return {}; }
    static Status from_value(const Value& value, const FieldRules& rules, Atlas& out);
    static void write(const Atlas& atlas, JsonWriter& writer); ///< what tells it from others, for a person
    static Status read(JsonCursor& cursor, Atlas&)
    {
        QByteArray ignored;
        return cursor.read_raw(ignored);
    }
    static std::size_t kept_bytes(const Atlas& kept, const Atlas& other) { return kept.bytes_beside(other); }
};

} // namespace tarn
