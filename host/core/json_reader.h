#pragma once

#include "status.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <string_view>

namespace tarn {

class JsonText;

/// One value of a JSON text, met while reading. Values are read once, front to back; a cursor lives only during the
/// call that hands it out. Every failure names the file, the line and what was expected.
class JsonCursor {
public:
    enum class Kind { Null, Bool, Number, String, Array, Object };

    Kind kind();
    Status read(bool& value);
    Status read(int& value);
    Status read(quint32& value);
    Status read(float& value);
    Status read(double& value);
    Status read(QString& value);
    /// The value as checked JSON text, at most max_depth deep.
    Status read_raw(QByteArray& json);

    /// `visit(std::string_view key, JsonCursor& value)` for every member; a member must be read or skipped in it.
    template <class Visitor>
    Status each_member(Visitor&& visit)
    {
        return each_member_impl(&visit, [](void* visitor, std::string_view key, JsonCursor& value) {
            return (*static_cast<std::remove_reference_t<Visitor>*>(visitor))(key, value);
        });
    }
    /// `visit(JsonCursor& element)` for every element.
    template <class Visitor>
    Status each_element(Visitor&& visit)
    {
        return each_element_impl(&visit, [](void* visitor, JsonCursor& value) {
            return (*static_cast<std::remove_reference_t<Visitor>*>(visitor))(value);
        });
    }
    /// The integer member `key` of this object, wherever it stands; each_member() still starts at the front.
    Status peek_int(std::string_view key, int& value);

    /// An error at this place: "scene.json, line 12: <what>".
    Status fail(const QString& what) const;

    static constexpr int max_depth = 256;

private:
    friend class JsonText;
    struct Impl;
    explicit JsonCursor(Impl& impl) : m_impl(impl) {}

    using MemberVisitor = Status (*)(void*, std::string_view, JsonCursor&);
    using ElementVisitor = Status (*)(void*, JsonCursor&);
    Status each_member_impl(void* visitor, MemberVisitor visit);
    Status each_element_impl(void* visitor, ElementVisitor visit);

    Impl& m_impl;
};

/// A JSON text and its parser.
class JsonText {
public:
    /// `file` names the text in messages.
    JsonText(QByteArray text, QString file);
    ~JsonText();

    /// Reads the text, which must be one object, through `visit(std::string_view key, JsonCursor& value)`.
    template <class Visitor>
    Status each_member(Visitor&& visit)
    {
        return read_root([&](JsonCursor& root) { return root.each_member(visit); });
    }

private:
    friend class JsonCursor;
    template <class Reader>
    Status read_root(Reader&& reader)
    {
        return read_root_impl(&reader, [](void* visitor, JsonCursor& root) {
            return (*static_cast<std::remove_reference_t<Reader>*>(visitor))(root);
        });
    }
    Status read_root_impl(void* reader, JsonCursor::ElementVisitor read);

    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace tarn
