#include "plain_package.h"

#define SIMDJSON_EXCEPTIONS 0
#include <simdjson.h>
#include <zip.h>
#define ZLIB_CONST
#include <zlib.h>

#include <charconv>
#include <memory>

namespace bench {

namespace {

namespace od = simdjson::ondemand;

constexpr const char* scene_entry = "scene.json";
constexpr const char* animation_entry = "animation.json";

/// Unpacked and with the parser's padding behind it; `size` is without.
std::unique_ptr<char[]> unpack(const std::string& path, const char* entry, std::size_t& size)
{
    zip_t* archive = zip_open(path.c_str(), ZIP_RDONLY, nullptr);
    if (!archive)
        return nullptr;
    std::unique_ptr<char[]> text;
    zip_stat_t stat;
    zip_file_t* file = zip_fopen(archive, entry, 0);
    if (file && zip_stat(archive, entry, 0, &stat) == 0) {
        size = stat.size;
        text.reset(new char[size + simdjson::SIMDJSON_PADDING]);
        if (zip_fread(file, text.get(), size) != zip_int64_t(size))
            text.reset();
    }
    if (file)
        zip_fclose(file);
    zip_discard(archive);
    return text;
}

std::string json(const std::string& path, const char* entry)
{
    std::size_t size = 0;
    const auto text = unpack(path, entry, size);
    return text ? std::string(text.get(), size) : std::string();
}

bool get(od::value value, int& out)
{
    int64_t number = 0;
    const bool good = !value.get_int64().get(number);
    out = int(number);
    return good;
}

bool get(od::value value, unsigned& out)
{
    uint64_t number = 0;
    const bool good = !value.get_uint64().get(number);
    out = unsigned(number);
    return good;
}

bool get(od::value value, float& out)
{
    double number = 0;
    const bool good = !value.get_double().get(number);
    out = float(number);
    return good;
}

bool get(od::value value, bool& out)
{
    return !value.get_bool().get(out);
}

bool get(od::value value, std::string& out)
{
    std::string_view text;
    if (value.get_string().get(text))
        return false;
    out = text;
    return true;
}

/// Appends to `out`.
bool get_numbers(od::value value, std::vector<float>& out)
{
    od::array array;
    if (value.get_array().get(array))
        return false;
    for (auto element : array) {
        double number = 0;
        if (element.get_double().get(number))
            return false;
        out.push_back(float(number));
    }
    return true;
}

bool get_keys(od::value value, PlainTrack& track)
{
    od::array chunks;
    if (value.find_field("chunks").get_array().get(chunks))
        return false;
    for (auto chunk : chunks) {
        od::value times;
        od::value values;
        if (chunk.find_field("t").get(times) || !get_numbers(times, track.times) || chunk.find_field("v").get(values)
            || !get_numbers(values, track.values))
            return false;
        track.line_ends.push_back(track.times.size());
    }
    return true;
}

bool get_member(PlainTrack& t, std::string_view key, od::value value)
{
    return key == "id"     ? get(value, t.id)
        : key == "object"  ? get(value, t.object)
        : key == "name"    ? get(value, t.name)
        : key == "channel" ? get(value, t.channel)
        : key == "keys"    ? get_keys(value, t)
                           : false;
}

bool get_member(PlainControl& c, std::string_view key, od::value value)
{
    // In the order in which they are written; one comparison of lengths passes most of them over.
    return key == "id"              ? get(value, c.id)
        : key == "name"             ? get(value, c.name)
        : key == "type"             ? get(value, c.type)
        : key == "dialog"           ? get(value, c.dialog)
        : key == "x"                ? get(value, c.x)
        : key == "y"                ? get(value, c.y)
        : key == "width"            ? get(value, c.width)
        : key == "height"           ? get(value, c.height)
        : key == "text"             ? get(value, c.text)
        : key == "visible"          ? get(value, c.visible)
        : key == "enabled"          ? get(value, c.enabled)
        : key == "locked"           ? get(value, c.locked)
        : key == "color_tag"        ? get(value, c.color_tag)
        : key == "align_type"       ? get(value, c.align_type)
        : key == "base_width"       ? get(value, c.base_width)
        : key == "base_height"      ? get(value, c.base_height)
        : key == "text_color"       ? get(value, c.text_color)
        : key == "font_size"        ? get(value, c.font_size)
        : key == "bold"             ? get(value, c.bold)
        : key == "horizontal_align" ? get(value, c.horizontal_align)
        : key == "vertical_align"   ? get(value, c.vertical_align)
        : key == "word_wrap"        ? get(value, c.word_wrap)
        : key == "shadow"           ? get(value, c.shadow)
        : key == "checked"          ? get(value, c.checked)
        : key == "image"            ? get(value, c.image)
        : key == "stretch"          ? get(value, c.stretch)
                                    : false;
}

bool get_member(PlainDialog& d, std::string_view key, od::value value)
{
    return key == "id"     ? get(value, d.id)
        : key == "name"    ? get(value, d.name)
        : key == "caption" ? get(value, d.caption)
        : key == "x"       ? get(value, d.x)
        : key == "y"       ? get(value, d.y)
        : key == "width"   ? get(value, d.width)
        : key == "height"  ? get(value, d.height)
                           : false;
}

template <class Plain>
bool get(od::value value, std::vector<Plain>& out)
{
    od::array array;
    if (value.get_array().get(array))
        return false;
    for (auto element : array) {
        od::object object;
        if (element.get_object().get(object))
            return false;
        Plain& plain = out.emplace_back();
        for (auto field : object) {
            std::string_view key;
            od::value member;
            if (field.unescaped_key().get(key) || field.value().get(member) || !get_member(plain, key, member))
                return false;
        }
    }
    return true;
}

/// Puts a JSON text together as the product's packages have it: what is at its default is left out.
class Format {
public:
    std::string text;

    void begin_line()
    {
        text += "\n{";
        m_first = true;
    }
    void end_line(bool last) { text += last ? "}" : "},"; }

    template <class T>
    void member(std::string_view key, const T& value, const T& usual)
    {
        if (value == usual)
            return;
        if (!m_first)
            text += ',';
        m_first = false;
        text += '"';
        text += key;
        text += "\":";
        put(value);
    }
    template <class T>
    void number(T value)
    {
        char digits[32];
        text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
    }

private:
    void put(bool value) { text += value ? "true" : "false"; }
    void put(int value) { number(value); }
    void put(unsigned value) { number(value); }
    void put(float value) { number(value); }
    void put(const std::string& value)
    {
        text += '"';
        for (const char c : value) {
            if (c == '"' || c == '\\')
                text += '\\';
            text += c;
        }
        text += '"';
    }

    bool m_first = true;
};

void write(Format& out, const PlainDialog& d)
{
    static const PlainDialog usual;
    out.member("id", d.id, usual.id);
    out.member("name", d.name, usual.name);
    out.member("caption", d.caption, usual.caption);
    out.member("x", d.x, usual.x);
    out.member("y", d.y, usual.y);
    out.member("width", d.width, usual.width);
    out.member("height", d.height, usual.height);
}

void write(Format& out, const PlainControl& c)
{
    static const PlainControl usual;
    out.member("id", c.id, usual.id);
    out.member("name", c.name, usual.name);
    out.member("type", c.type, usual.type);
    out.member("dialog", c.dialog, usual.dialog);
    out.member("x", c.x, usual.x);
    out.member("y", c.y, usual.y);
    out.member("width", c.width, usual.width);
    out.member("height", c.height, usual.height);
    out.member("visible", c.visible, usual.visible);
    out.member("enabled", c.enabled, usual.enabled);
    out.member("locked", c.locked, usual.locked);
    out.member("color_tag", c.color_tag, usual.color_tag);
    out.member("align_type", c.align_type, usual.align_type);
    out.member("base_width", c.base_width, usual.base_width);
    out.member("base_height", c.base_height, usual.base_height);
    out.member("text", c.text, usual.text);
    out.member("text_color", c.text_color, usual.text_color);
    out.member("font_size", c.font_size, usual.font_size);
    out.member("bold", c.bold, usual.bold);
    out.member("horizontal_align", c.horizontal_align, usual.horizontal_align);
    out.member("vertical_align", c.vertical_align, usual.vertical_align);
    out.member("word_wrap", c.word_wrap, usual.word_wrap);
    out.member("shadow", c.shadow, usual.shadow);
    out.member("checked", c.checked, usual.checked);
    out.member("image", c.image, usual.image);
    out.member("stretch", c.stretch, usual.stretch);
}

void write_numbers(Format& out, const char* name, const std::vector<float>& numbers, std::size_t from, std::size_t to)
{
    out.text += name;
    for (std::size_t i = from; i < to; ++i) {
        if (i > from)
            out.text += ',';
        out.number(numbers[i]);
    }
    out.text += ']';
}

void write(Format& out, const PlainTrack& t)
{
    static const PlainTrack usual;
    out.member("id", t.id, usual.id);
    out.member("object", t.object, usual.object);
    out.member("name", t.name, usual.name);
    out.member("channel", t.channel, usual.channel);
    out.text += ",\"keys\":{\"type\":0,\"chunks\":[";
    std::size_t from = 0;
    for (const std::size_t to : t.line_ends) {
        out.text += from ? ",\n{" : "\n{";
        write_numbers(out, "\"t\":[", t.times, from, to);
        write_numbers(out, ",\"v\":[", t.values, from, to);
        out.text += '}';
        from = to;
    }
    out.text += "]}";
}

template <class Plain>
void write_all(Format& out, const std::vector<Plain>& all)
{
    for (const Plain& plain : all) {
        out.begin_line();
        write(out, plain);
        out.end_line(&plain == &all.back());
    }
}

} // namespace

bool load_plain(const std::string& path, PlainScene& scene)
{
    std::size_t size = 0;
    const auto text = unpack(path, scene_entry, size);
    od::parser parser;
    od::document document;
    od::object root;
    if (!text || parser.iterate(text.get(), size, size + simdjson::SIMDJSON_PADDING).get(document)
        || document.get_object().get(root))
        return false;
    scene = {};
    for (auto field : root) {
        std::string_view key;
        od::value value;
        if (field.unescaped_key().get(key) || field.value().get(value))
            return false;
        const bool good = key == "dialogs" ? get(value, scene.dialogs)
            : key == "controls"            ? get(value, scene.controls)
            : key == "screen_width"        ? get(value, scene.screen_width)
            : key == "screen_height"       ? get(value, scene.screen_height)
            : key == "next_id"             ? get(value, scene.next_id)
                                           : true;
        if (!good)
            return false;
    }
    return true;
}

bool load_plain_keys(const std::string& path, std::vector<PlainTrack>& tracks)
{
    std::size_t size = 0;
    const auto text = unpack(path, animation_entry, size);
    od::parser parser;
    od::document document;
    od::value variables;
    tracks.clear();
    return text && !parser.iterate(text.get(), size, size + simdjson::SIMDJSON_PADDING).get(document)
        && !document.find_field("variables").get(variables) && get(variables, tracks);
}

std::string scene_json(const std::string& path)
{
    return json(path, scene_entry);
}

std::string animation_json(const std::string& path)
{
    return json(path, animation_entry);
}

std::string format_plain_keys(const std::vector<PlainTrack>& tracks)
{
    Format out;
    out.text = "\"variables\":[";
    write_all(out, tracks);
    out.text += "\n]";
    return std::move(out.text);
}

std::string format_plain(const PlainScene& scene)
{
    Format out;
    out.text = "{\n\"screen_width\":";
    out.number(scene.screen_width);
    out.text += ",\"screen_height\":";
    out.number(scene.screen_height);
    out.text += ",\"next_id\":";
    out.number(scene.next_id);
    out.text
        += ",\n\"root\":{\"id\":1,\"name\":\"ROOT\",\"caption_shown\":false,\"frame_shown\":false},\n\"dialogs\":[";
    write_all(out, scene.dialogs);
    out.text += "\n],\n\"controls\":[";
    write_all(out, scene.controls);
    out.text += "\n]\n}\n";
    return std::move(out.text);
}

std::vector<unsigned char> pack_plain(const std::string& text)
{
    z_stream stream{};
    // No header around it, as in a zip archive.
    if (deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY) != Z_OK)
        return {};
    std::vector<unsigned char> packed(deflateBound(&stream, uLong(text.size())));
    stream.next_in = reinterpret_cast<const unsigned char*>(text.data());
    stream.avail_in = uInt(text.size());
    stream.next_out = packed.data();
    stream.avail_out = uInt(packed.size());
    const bool complete = deflate(&stream, Z_FINISH) == Z_STREAM_END;
    packed.resize(complete ? stream.total_out : 0);
    deflateEnd(&stream);
    return packed;
}

} // namespace bench
