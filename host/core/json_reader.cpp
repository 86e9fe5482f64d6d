#include "json_reader.h"

#include "language.h"

// Without its exceptions the parser cannot be asked in a way that throws at a malformed text.
#define SIMDJSON_EXCEPTIONS 0
#include <simdjson.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace tarn {

namespace od = simdjson::ondemand;

struct JsonText::Impl {
    QByteArray text;
    qsizetype length = 0; ///< without the parser's padding
    QString file;
    od::parser parser;
    od::document document;

    Status fail_at(const char* place, const QString& what) const
    {
        const char* begin = text.constData();
        const char* end = std::clamp(place, begin, begin + length);
        const auto line = 1 + std::count(begin, end, '\n');
        return Status::error(lang(u"%1，第 %2 行：%3", u"%1, line %2: %3").arg(file).arg(line).arg(what));
    }
    const char* here()
    {
        const char* place = nullptr;
        if (document.current_location().get(place))
            return text.constData() + length;
        return place;
    }
};

struct JsonCursor::Impl {
    JsonText::Impl& text;
    od::value value;
    int depth;
    std::optional<od::object> object{}; ///< kept once opened, since an object can be opened only once

    simdjson::error_code open_object()
    {
        if (object)
            return simdjson::SUCCESS;
        od::object opened;
        const auto error = value.get_object().get(opened);
        if (!error)
            object = opened;
        return error;
    }
};

namespace {

QString expected_number()
{
    return lang(u"应为数字", u"a number is expected here");
}

QString malformed(simdjson::error_code error)
{
    return lang(u"JSON 格式错误（%1）", u"this is not well-formed JSON (%1)")
        .arg(QString::fromLatin1(simdjson::error_message(error)));
}

int nesting_of(std::string_view json)
{
    int depth = 0;
    int deepest = 0;
    bool in_string = false;
    for (std::size_t i = 0; i < json.size(); ++i) {
        const char c = json[i];
        if (in_string) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                in_string = false;
        } else if (c == '"') {
            in_string = true;
        } else if (c == '[' || c == '{') {
            deepest = std::max(deepest, ++depth);
        } else if (c == ']' || c == '}') {
            --depth;
        }
    }
    return deepest;
}

QString too_deep()
{
    return lang(u"嵌套过深（最多 %1 层）", u"values are nested too deeply (at most %1 levels)")
        .arg(JsonCursor::max_depth);
}

} // namespace

Status JsonCursor::fail(const QString& what) const
{
    return m_impl.text.fail_at(m_impl.text.here(), what);
}

JsonCursor::Kind JsonCursor::kind()
{
    od::json_type type{};
    if (m_impl.value.type().get(type))
        return Kind::Null;
    switch (type) {
    case od::json_type::array: return Kind::Array;
    case od::json_type::object: return Kind::Object;
    case od::json_type::number: return Kind::Number;
    case od::json_type::string: return Kind::String;
    case od::json_type::boolean: return Kind::Bool;
    case od::json_type::null: break;
    }
    return Kind::Null;
}

Status JsonCursor::read(bool& value)
{
    if (m_impl.value.get_bool().get(value))
        return fail(lang(u"应为 true 或 false", u"true or false is expected here"));
    return {};
}

Status JsonCursor::read(int& value)
{
    int64_t number = 0;
    if (m_impl.value.get_int64().get(number))
        return fail(lang(u"应为整数", u"a whole number is expected here"));
    if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max())
        return fail(lang(u"数字超出范围", u"this number is out of range"));
    value = static_cast<int>(number);
    return {};
}

Status JsonCursor::read(quint32& value)
{
    int64_t number = 0;
    if (m_impl.value.get_int64().get(number))
        return fail(lang(u"应为整数", u"a whole number is expected here"));
    if (number < 0 || number > std::numeric_limits<quint32>::max())
        return fail(lang(u"数字超出范围", u"this number is out of range"));
    value = static_cast<quint32>(number);
    return {};
}

Status JsonCursor::read(double& value)
{
    if (m_impl.value.get_double().get(value))
        return fail(expected_number());
    if (!std::isfinite(value))
        return fail(lang(u"数字不是有限值", u"this number is not finite"));
    return {};
}

Status JsonCursor::read(float& value)
{
    double number = 0;
    if (auto status = read(number); !status)
        return status;
    value = static_cast<float>(number);
    if (!std::isfinite(value))
        return fail(lang(u"数字超出范围", u"this number is out of range"));
    return {};
}

Status JsonCursor::read(QString& value)
{
    std::string_view text;
    if (m_impl.value.get_string().get(text))
        return fail(lang(u"应为文本", u"a text is expected here"));
    value = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    return {};
}

Status JsonCursor::read_raw(QByteArray& json)
{
    const Kind what = kind();
    simdjson::error_code error = simdjson::SUCCESS;
    std::string_view raw;
    if (what == Kind::Object) {
        od::object object;
        error = m_impl.value.get_object().get(object);
        if (!error)
            error = object.raw_json().get(raw);
    } else if (what == Kind::Array) {
        od::array array;
        error = m_impl.value.get_array().get(array);
        if (!error)
            error = array.raw_json().get(raw);
    } else {
        raw = m_impl.value.raw_json_token();
        // Reading moves the cursor on and checks the token.
        bool flag = false;
        double number = 0;
        std::string_view text;
        if (what == Kind::String)
            error = m_impl.value.get_string().get(text);
        else if (what == Kind::Number)
            error = m_impl.value.get_double().get(number);
        else if (what == Kind::Bool)
            error = m_impl.value.get_bool().get(flag);
        else if (error = m_impl.value.is_null().get(flag); !error && !flag)
            error = simdjson::INCORRECT_TYPE;
    }
    if (error)
        return fail(malformed(error));
    while (!raw.empty() && static_cast<unsigned char>(raw.back()) <= ' ')
        raw.remove_suffix(1);
    if (nesting_of(raw) + m_impl.depth > max_depth)
        return fail(too_deep());
    if (what == Kind::Object || what == Kind::Array) {
        // The on-demand parser skips without looking; what is kept and written back must be sound.
        simdjson::dom::parser checker;
        simdjson::dom::element ignored;
        if (const auto bad = checker.parse(raw.data(), raw.size()).get(ignored))
            return fail(malformed(bad));
    }
    json = QByteArray(raw.data(), static_cast<qsizetype>(raw.size()));
    return {};
}

Status JsonCursor::peek_int(std::string_view key, int& value)
{
    if (m_impl.open_object())
        return fail(lang(u"应为对象 { … }", u"an object { … } is expected here"));
    int64_t number = 0;
    if (m_impl.object->find_field_unordered(key).get_int64().get(number) || number < std::numeric_limits<int>::min()
        || number > std::numeric_limits<int>::max())
        return fail(lang(u"缺少整数 \"%1\"", u"the whole number \"%1\" is missing")
                        .arg(QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()))));
    value = static_cast<int>(number);
    bool not_empty = false;
    if (const auto error = m_impl.object->reset().get(not_empty))
        return fail(malformed(error));
    return {};
}

Status JsonCursor::each_member_impl(void* visitor, MemberVisitor visit)
{
    if (m_impl.depth >= max_depth)
        return fail(too_deep());
    if (m_impl.open_object())
        return fail(lang(u"应为对象 { … }", u"an object { … } is expected here"));
    for (auto field : *m_impl.object) {
        std::string_view key;
        JsonCursor::Impl impl{m_impl.text, {}, m_impl.depth + 1};
        if (const auto error = field.unescaped_key().get(key))
            return fail(malformed(error));
        if (const auto error = field.value().get(impl.value))
            return fail(malformed(error));
        JsonCursor cursor(impl);
        if (auto status = visit(visitor, key, cursor); !status)
            return status;
    }
    return {};
}

Status JsonCursor::each_element_impl(void* visitor, ElementVisitor visit)
{
    if (m_impl.depth >= max_depth)
        return fail(too_deep());
    od::array array;
    if (m_impl.value.get_array().get(array))
        return fail(lang(u"应为列表 [ … ]", u"a list [ … ] is expected here"));
    for (auto element : array) {
        JsonCursor::Impl impl{m_impl.text, {}, m_impl.depth + 1};
        if (const auto error = element.get(impl.value))
            return fail(malformed(error));
        JsonCursor cursor(impl);
        if (auto status = visit(visitor, cursor); !status)
            return status;
    }
    return {};
}

JsonText::JsonText(QByteArray text, QString file) : m_impl(std::make_unique<Impl>())
{
    m_impl->text = std::move(text);
    m_impl->file = std::move(file);
    m_impl->length = m_impl->text.size();
    m_impl->text.append(static_cast<qsizetype>(simdjson::SIMDJSON_PADDING), ' ');
}

JsonText::~JsonText() = default;

Status JsonText::read_root_impl(void* reader, JsonCursor::ElementVisitor read)
{
    Impl& text = *m_impl;
    const auto length = static_cast<std::size_t>(text.length);
    if (const auto error = text.parser
                               .iterate(text.text.constData(), length, static_cast<std::size_t>(text.text.size()))
                               .get(text.document))
        return text.fail_at(text.text.constData(), malformed(error));
    JsonCursor::Impl impl{text, {}, 0};
    od::value root;
    if (const auto error = text.document.get_value().get(root))
        return text.fail_at(text.text.constData(), malformed(error));
    impl.value = root;
    JsonCursor cursor(impl);
    if (auto status = read(reader, cursor); !status)
        return status;
    const char* beyond = nullptr;
    if (!text.document.current_location().get(beyond)) // there is a place left to read from
        return text.fail_at(text.here(),
                            lang(u"内容之后还有多余的文本", u"there is text after the end of the content"));
    return {};
}

} // namespace tarn
