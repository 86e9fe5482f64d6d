#include "core/json_reader.h"

#include "core/field_type.h"
#include "core/json_writer.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;
using tarn::JsonCursor;
using tarn::JsonText;
using tarn::JsonWriter;
using tarn::Status;

namespace {

/// Reads all of a value, whatever it is, as the readers of packages do.
Status walk(JsonCursor& value)
{
    switch (value.kind()) {
    case JsonCursor::Kind::Object:
        return value.each_member([](std::string_view, JsonCursor& member) { return walk(member); });
    case JsonCursor::Kind::Array: return value.each_element([](JsonCursor& element) { return walk(element); });
    case JsonCursor::Kind::String: {
        QString text;
        return value.read(text);
    }
    case JsonCursor::Kind::Number: {
        double number = 0;
        return value.read(number);
    }
    default: {
        QByteArray json;
        return value.read_raw(json);
    }
    }
}

Status walk(const QByteArray& text)
{
    return JsonText(text, u"test.json"_s).each_member([](std::string_view, JsonCursor& value) { return walk(value); });
}

/// Keeps every member as text.
Status keep(const QByteArray& text, QByteArray* kept = nullptr)
{
    return JsonText(text, u"test.json"_s).each_member([kept](std::string_view, JsonCursor& value) {
        QByteArray json;
        auto status = value.read_raw(json);
        if (kept)
            *kept = json;
        return status;
    });
}

template <class T>
Status read_as(const QByteArray& value, T& out)
{
    return JsonText("{\n\"a\":" + value + "}", u"test.json"_s).each_member([&](std::string_view, JsonCursor& cursor) {
        if constexpr (std::is_arithmetic_v<T>)
            return cursor.read(out);
        else
            return tarn::FieldType<T>::read(cursor, out);
    });
}

template <class T>
void expect_refused(const QByteArray& value)
{
    T out{};
    const Status status = read_as(value, out);
    EXPECT_FALSE(status.ok()) << value.toStdString();
    EXPECT_TRUE(status.message().startsWith(u"test.json"_s) && status.message().contains(u'2'))
        << status.message().toStdString();
}

QByteArray nested(int depth, const char* open, const char* close)
{
    return "{\"a\":" + QByteArray(open).repeated(depth) + "1" + QByteArray(close).repeated(depth) + "}";
}

} // namespace

TEST(JsonText, cut_off_anywhere_is_refused_with_the_files_name)
{
    const QByteArray whole
        = "{\n\"screen\":1280,\"on\":true,\"none\":null,\n\"list\":[\n{\"id\":2,\"x\":-1.5e3,\"name\":"
          "\"\xe6\xb9\x96 \\\"\\u6e56\\\\\"},\n{}],\"o\":{\"p\":[[]]}}";
    ASSERT_TRUE(walk(whole).ok()) << walk(whole).message().toStdString();
    ASSERT_TRUE(keep(whole).ok());
    for (qsizetype length = 0; length < whole.size(); ++length) {
        for (const Status& status : {walk(whole.left(length)), keep(whole.left(length))}) {
            EXPECT_FALSE(status.ok()) << "cut at " << length;
            EXPECT_TRUE(status.message().startsWith(u"test.json"_s)) << status.message().toStdString();
        }
    }
}

TEST(JsonText, malformed_texts_are_refused_however_they_are_read)
{
    const QByteArray texts[] = {
        "",
        " ",
        "[]",
        "5",
        "null",
        "\"a\"",
        "{} {}",
        "{} x",
        "{}}",
        "{\"a\":1}]",
        "{\"a\":1,}",
        "{\"a\" 1}",
        "{\"a\":}",
        "{a:1}",
        "{'a':1}",
        "{\"a\":[1 2]}",
        "{\"a\":[1,]}",
        "{\"a\":[,1]}",
        "{\"a\":{\"b\":1]}",
        "{\"a\":[}]}",
        "{\"a\":01}",
        "{\"a\":+1}",
        "{\"a\":.5}",
        "{\"a\":1.}",
        "{\"a\":0x10}",
        "{\"a\":NaN}",
        "{\"a\":-Infinity}",
        "{\"a\":1e999}",
        "{\"a\":[-1e999]}",
        "{\"a\":tru}",
        "{\"a\":truex}",
        "{\"a\":nul}",
        "{\"a\":[nulll]}",
        "{\"a\":\"\x80\"}",             // not UTF-8
        "{\"a\":\"\xc0\xaf\"}",         // an overlong slash
        "{\"a\":\"\xed\xa0\x80\"}",     // half a surrogate pair
        "{\"a\":\"\xf5\x80\x80\x80\"}", // beyond Unicode
        "{\"a\":\"\xe6\xb9\"}",         // cut off in a character
        "{\"a\":\"\\x\"}",
        "{\"a\":\"\\u12\"}",
        "{\"a\":\"line\nbreak\"}",
        "{\"a\":1/*comment*/}",
        QByteArray("{\"a\":1}\0{}", 10),
    };
    for (const QByteArray& text : texts) {
        for (const Status& status : {walk(text), keep(text)}) {
            EXPECT_FALSE(status.ok()) << text.toStdString();
            EXPECT_TRUE(status.message().startsWith(u"test.json"_s)) << text.toStdString();
        }
    }
}

TEST(JsonText, nesting_is_read_and_kept_up_to_a_limit)
{
    const int limit = JsonCursor::max_depth - 1; // the text's own object counts
    for (const auto& [open, close] : {std::pair{"[", "]"}, std::pair{"{\"b\":", "}"}}) {
        EXPECT_TRUE(walk(nested(limit, open, close)).ok());
        EXPECT_TRUE(keep(nested(limit, open, close)).ok());
        for (const int depth : {limit + 1, 2000, 100'000}) {
            EXPECT_FALSE(walk(nested(depth, open, close)).ok()) << depth;
            EXPECT_FALSE(keep(nested(depth, open, close)).ok()) << depth;
        }
    }
    EXPECT_TRUE(keep("{\"a\":[\"" + QByteArray(5000, '[') + "\\\"[\"]}").ok()) << "brackets in a text do not count";
}

TEST(JsonCursor, values_of_another_kind_or_size_are_refused_with_file_and_line)
{
    const QByteArray others[] = {"null", "\"1\"", "[]", "{}"};
    for (const QByteArray& other : others) {
        expect_refused<bool>(other);
        expect_refused<int>(other);
        expect_refused<quint32>(other);
        expect_refused<float>(other);
        expect_refused<double>(other);
    }
    for (const char* other : {"1", "true", "null", "[\"a\"]", "{}"}) {
        expect_refused<QString>(other);
        expect_refused<QStringList>(QByteArray("[\"a\",") + other + "]");
    }
    expect_refused<QStringList>("\"a\"");
    expect_refused<QString>("\"\\ud800\"");
    for (const char* number : {"1.5", "1e3", "2147483648", "-2147483649", "99999999999999999999", "true"})
        expect_refused<int>(number);
    for (const char* number : {"-1", "4294967296", "1.0", "18446744073709551616"})
        expect_refused<quint32>(number);
    expect_refused<float>("1e39");
    expect_refused<double>("1e400");
    expect_refused<bool>("1");
}

TEST(JsonCursor, numbers_at_the_edges_are_read)
{
    int whole = 0;
    EXPECT_TRUE(read_as("-2147483648", whole).ok() && whole == std::numeric_limits<int>::min());
    quint32 natural = 0;
    EXPECT_TRUE(read_as("4294967295", natural).ok() && natural == 0xffffffffu);
    float real = 0;
    EXPECT_TRUE(read_as("3.4028235e38", real).ok() && real == std::numeric_limits<float>::max());
    EXPECT_TRUE(read_as("7", real).ok() && real == 7);
}

TEST(JsonCursor, a_member_found_ahead_does_not_move_the_reading)
{
    QByteArray keys;
    const auto status = JsonText("{\"a\":[{\"x\":{\"type\":9},\"type\":5,\"z\":1}]}", u"t"_s)
                            .each_member([&](std::string_view, JsonCursor& list) {
                                return list.each_element([&](JsonCursor& element) {
                                    int type = 0;
                                    const auto peeked = element.peek_int("type", type);
                                    EXPECT_TRUE(peeked.ok());
                                    EXPECT_EQ(type, 5);
                                    return element.each_member([&](std::string_view key, JsonCursor& value) {
                                        keys.append(key.data(), qsizetype(key.size()));
                                        return walk(value);
                                    });
                                });
                            });
    EXPECT_TRUE(status.ok()) << status.message().toStdString();
    EXPECT_EQ(keys, "xtypez");
}

TEST(JsonCursor, what_is_kept_is_the_text_byte_for_byte)
{
    for (const char* json : {"1e2", "-0.0", "\"\\u6e56\\/\"", "[ 1,\n {\"b\" : null} ]", "{}", "true", "null",
                             "12345678901234567890", "\"\xe6\xb9\x96 \xf0\x9f\x98\x80\""}) {
        QByteArray kept;
        EXPECT_TRUE(keep(QByteArray("{\"a\": ") + json + " \n}", &kept).ok()) << json;
        EXPECT_EQ(kept, json);
    }
}

TEST(JsonWriter, what_is_written_reads_back_the_same)
{
    const QString texts[] = {u""_s, u"湖 \U0001F600"_s, u"\"\\/\b\f\n\r\t"_s,
                             QString(QChar(0)) + u"\u001f\u007f\u2028"_s};
    for (const QString& text : texts) {
        JsonWriter writer;
        writer.value(text);
        QString back;
        EXPECT_TRUE(read_as(QByteArray::fromStdString(writer.text()), back).ok());
        EXPECT_EQ(back, text);
    }
    for (const float number : {0.f, -0.1f, 1.f / 3, 1e-40f, 16777216.f, std::numeric_limits<float>::max()}) {
        JsonWriter writer;
        writer.value(number);
        float back = 5;
        EXPECT_TRUE(read_as(QByteArray::fromStdString(writer.text()), back).ok()) << writer.text();
        EXPECT_EQ(back, number);
    }
}
