#pragma once

#include <string>
#include <vector>

namespace bench {

/// A control as a plain structure with the attributes of all types.
struct PlainControl {
    unsigned id = 0;
    std::string name;
    int type = -1;
    unsigned dialog = 0;
    float x = 0;
    float y = 0;
    float width = 100;
    float height = 24;
    bool visible = true;
    bool enabled = true;
    bool locked = false;
    unsigned color_tag = 0xffffffff;
    int align_type = 0;
    float base_width = 0;
    float base_height = 0;
    std::string text;
    unsigned text_color = 0;
    int font_size = 0;
    bool bold = false;
    int horizontal_align = 0;
    int vertical_align = 0;
    bool word_wrap = false;
    bool shadow = false;
    bool checked = false;
    std::string image;
    bool stretch = true;
};

struct PlainDialog {
    unsigned id = 0;
    std::string name;
    std::string caption;
    int x = 0;
    int y = 0;
    int width = 200;
    int height = 150;
};

struct PlainScene {
    int screen_width = 1280;
    int screen_height = 720;
    unsigned next_id = 2;
    std::vector<PlainDialog> dialogs;
    std::vector<PlainControl> controls;
};

/// The keys of one variable of numbers.
struct PlainTrack {
    unsigned id = 0;
    unsigned object = 0;
    std::string name;
    int channel = -1;
    std::vector<float> times;
    std::vector<float> values;
    std::vector<std::size_t> line_ends; ///< how many keys there are up to the end of each line of the text
};

/// The least that any program does to load a package of bench_scene.h: unpack its scene with libzip and parse it with
/// simdjson. Knows only the attributes that these packages hold; false when it meets another.
bool load_plain(const std::string& path, PlainScene& scene);
/// The scene's text of a package.
std::string scene_json(const std::string& path);

/// The same text from the structures.
std::string format_plain(const PlainScene& scene);
// The same of the variables of a package's animation, which have nothing but times and values.
bool load_plain_keys(const std::string& path, std::vector<PlainTrack>& tracks);
std::string animation_json(const std::string& path);
/// The list of the variables alone.
std::string format_plain_keys(const std::vector<PlainTrack>& tracks);

/// Packed in memory by zlib at its fastest level; empty when that fails.
std::vector<unsigned char> pack_plain(const std::string& text);

} // namespace bench
