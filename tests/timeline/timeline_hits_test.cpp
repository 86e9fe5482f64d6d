#include "animation/animation_fixture.h"
#include "timeline/timeline_hits.h"
#include "timeline/timeline_rows.h"

#include <random>

using namespace tarn;
using namespace tarn::test;

namespace {

constexpr int width = 800;

class TimelineHits : public AnimationTest {
protected:
    TimelineHits()
    {
        m_view.scene = &m_scene;
        m_view.client_width = width;
        m_view.client_height = 300;
    }
    /// 40 pixels a second: these are columns.
    static float at(float column) { return column * 0.025f; }
    CTVar* keys_at(CTimerObject* object, Channel channel, std::initializer_list<float> columns)
    {
        CTVar* variable = object->create_channel_var(channel);
        for (const float column : columns)
            variable->set_key_value(at(column), value(variable->type(), column));
        return variable;
    }
    TimelineHover hover(int x, int y) const { return find_hover(m_view, x, y); }

    TimelineView m_view;
    CTimebar* m_bar = m_scene.create_bar(15);
    CTimerObject* m_object = timer(m_bar, thing());
};

} // namespace

TEST_F(TimelineHits, marks_are_hit_within_two_pixels_and_in_their_bands)
{
    keys_at(m_object, Channel::Transparency, {100});
    m_bar->insert_script_key(at(200));
    m_bar->create_mark(at(300), at(60), u"mark"_s);
    for (const auto& [distance, hit] : {std::pair(-3, false), {-2, true}, {0, true}, {2, true}, {3, false}}) {
        EXPECT_EQ(hover(100 + distance, 14).key >= 0, hit) << distance;
        EXPECT_EQ(hover(200 + distance, 50).script >= 0, hit) << distance;
        EXPECT_EQ(hover(300 + distance, 14).extra >= 0, hit) << distance;
        EXPECT_EQ(hover(360 + distance, 50).other >= 0, hit) << distance;
    }
    for (const auto& [y, hit] : {std::pair(8, false), {9, true}, {20, true}, {21, false}})
        EXPECT_EQ(hover(100, y).key >= 0, hit) << y;
    for (const auto& [y, hit] : {std::pair(42, false), {43, true}, {63, true}, {64, false}})
        EXPECT_EQ(hover(200, y).script >= 0, hit) << y;
    EXPECT_EQ(hover(300, 50).extra, -1);
    EXPECT_EQ(hover(360, 14).other, -1);
}

TEST_F(TimelineHits, of_marks_that_lie_close_the_last_is_hit)
{
    keys_at(m_object, Channel::Transparency, {100, 101});
    keys_at(m_object, Channel::Position, {99, 102});
    EXPECT_FLOAT_EQ(hover(100, 14).key, at(102));
    EXPECT_FLOAT_EQ(hover(99, 14).key, at(101));
    m_bar->create_mark(at(101), 0, u"first"_s);
    m_bar->create_mark(at(100), 0, u"second"_s);
    EXPECT_FLOAT_EQ(hover(100, 14).extra, at(100));
}

TEST_F(TimelineHits, the_bands_have_the_current_objects_keys_or_those_of_its_current_variable)
{
    CTVar* variable = keys_at(m_object, Channel::Transparency, {100});
    keys_at(m_object, Channel::Position, {200});
    CTimerObject* other = timer(m_bar, thing());
    keys_at(other, Channel::Position, {300});
    const auto hits = [&] {
        QString found;
        for (const int x : {100, 200, 300})
            found += hover(x, 14).key >= 0 ? u'x' : u'-';
        return found;
    };
    EXPECT_EQ(hits(), u"xxx"_s);
    m_bar->set_current_object(m_object);
    EXPECT_EQ(hits(), u"xx-"_s);
    m_object->set_current_variable(variable);
    EXPECT_EQ(hits(), u"x--"_s);
    m_scene.set_current_bar(nullptr);
    EXPECT_EQ(hits(), u"---"_s);
}

TEST_F(TimelineHits, the_ends_of_the_selected_range_are_points)
{
    m_view.range_anchor = at(200);
    m_view.current_time = at(100);
    EXPECT_EQ(hover(200, 14).point, -1);
    m_view.range_select = true;
    EXPECT_FLOAT_EQ(hover(202, 14).point, at(200));
    EXPECT_FLOAT_EQ(hover(98, 14).point, at(100));
    EXPECT_EQ(hover(150, 14).point, -1);
}

TEST_F(TimelineHits, span_and_end_are_taken_at_their_edges)
{
    CTVar* variable = keys_at(m_object, Channel::Transparency, {100, 200});
    EXPECT_FALSE(hits_span(m_view, 150, 15));
    m_view.selection.add_key(variable, at(100));
    m_view.selection.add_key(variable, at(200));
    for (const auto& [x, hit] : {std::pair(97, false), {98, true}, {150, true}, {202, true}, {203, false}})
        EXPECT_EQ(hits_span(m_view, x, 15), hit) << x;
    for (const auto& [y, hit] : {std::pair(10, false), {11, true}, {21, true}, {22, false}})
        EXPECT_EQ(hits_span(m_view, 150, y), hit) << y;
    for (const auto& [x, hit] : {std::pair(599, false), {600, true}, {618, true}, {619, false}})
        EXPECT_EQ(hits_end(m_view, x, 30), hit) << x;
    for (const auto& [y, hit] : {std::pair(21, false), {22, true}, {39, true}, {40, false}})
        EXPECT_EQ(hits_end(m_view, 605, y), hit) << y;
    m_scene.set_current_bar(nullptr);
    EXPECT_FALSE(hits_end(m_view, 605, 30));
}

TEST_F(TimelineHits, an_ease_handle_stands_where_half_of_the_way_is_done)
{
    CTVar* variable = keys_at(m_object, Channel::Transparency, {100, 200, 229, 300});
    EXPECT_FALSE(hover(150, 50).ease); // Without a current object there are no spans.
    m_bar->set_current_object(m_object);
    const auto handles = [&](float ease) {
        variable->set_key_ease(at(200), ease);
        std::vector<float> found;
        for (const EaseHandle& handle : ease_handles(m_view))
            found.push_back(std::round(handle.x()));
        return found;
    };
    // The second span is less than 30 pixels wide.
    EXPECT_EQ(handles(0), (std::vector<float>{150, 265}));
    EXPECT_EQ(handles(-100), (std::vector<float>{106, 265}));
    EXPECT_EQ(handles(100), (std::vector<float>{194, 265}));
    for (const auto& [x, hit] : {std::pair(190, false), {191, true}, {197, true}, {198, false}})
        EXPECT_EQ(hover(x, 50).ease.has_value(), hit) << x;
    for (const auto& [y, hit] : {std::pair(46, false), {47, true}, {55, true}, {56, false}})
        EXPECT_EQ(hover(194, y).ease.has_value(), hit) << y;

    const TimelineHover found = hover(194, 50);
    EXPECT_EQ(found.ease->variable, nullptr); // The keys are the object's until one of its variables is chosen.
    EXPECT_FLOAT_EQ(found.ease->begin, at(100));
    EXPECT_FLOAT_EQ(found.ease->end, at(200));
    m_object->set_current_variable(variable);
    EXPECT_EQ(hover(194, 50).ease->variable, variable);
    EXPECT_FLOAT_EQ(ease_handles(m_view).front().ease_at(172), 50);
    EXPECT_FLOAT_EQ(ease_handles(m_view).front().ease_at(0), -100);

    m_view.axis.view_origin = at(120); // The key before the left edge still has its span.
    EXPECT_TRUE(hover(74, 50).ease);
}

TEST_F(TimelineHits, a_label_stays_inside)
{
    EXPECT_EQ(label_box(400, 40, width), QRect(377, 2, 46, 16));
    EXPECT_EQ(label_box(22, 40, width).left(), 1);
    EXPECT_EQ(label_box(23, 40, width).left(), 0);
    EXPECT_EQ(label_box(-500, 40, width).left(), 1);
    EXPECT_EQ(label_box(width, 40, width).left() + 46, width - 1);
}

TEST_F(TimelineHits, rows_unfold_scroll_and_are_filtered)
{
    CTVar* variable = keys_at(m_object, Channel::Transparency, {100});
    keys_at(m_object, Channel::Position, {200});
    CTimerObject* other = timer(m_bar, thing(u"Other"_s));
    keys_at(other, Channel::Position, {300});
    const auto row_at = [&](int row) { return find_row(m_view, 300, bands::rows_top + row * TimelineRow::height); };
    EXPECT_FALSE(find_row(m_view, 300, bands::rows_top - 1));
    EXPECT_EQ(row_at(0)->row.object, nullptr);
    EXPECT_EQ(row_at(1)->row.object, m_object);
    EXPECT_EQ(row_at(2)->row.object, other);
    EXPECT_FLOAT_EQ(row_at(2)->key, at(300));
    EXPECT_FALSE(row_at(3));
    m_view.rows.open = {m_object->id()};
    EXPECT_EQ(row_at(2)->row.variable, variable);
    EXPECT_EQ(row_at(4)->row.object, other);
    EXPECT_EQ(greatest_scroll(m_view), 0);
    m_view.client_height = 120;
    EXPECT_EQ(greatest_scroll(m_view), 5 * TimelineRow::height - 40);
    m_view.rows.scroll = TimelineRow::height + 1;
    EXPECT_EQ(row_at(0)->row.object, m_object);
    m_view.rows = {};
    m_view.rows.filter = u"othe"_s;
    EXPECT_EQ(row_at(1)->row.object, other);
    m_view.rows = {};
    m_view.rows.only_selected = true;
    EXPECT_FALSE(row_at(1));
    m_view.selection.add_key(variable, at(100));
    EXPECT_EQ(row_at(1)->row.object, m_object);
    for (const RowPart part : {RowPart::Fold, RowPart::Lock, RowPart::Mute}) {
        const QPoint middle = row_part(row_at(1)->row, part, 200).center();
        EXPECT_EQ(find_row_name(m_view, middle.x(), middle.y(), 200)->part, part);
    }
}

// Tracks of many chunks, at scales from a pixel with many keys to keys far apart.
TEST_F(TimelineHits, columns_and_hits_are_those_of_every_single_key)
{
    std::mt19937 random(7);
    const auto number = [&](float from, float to) { return std::uniform_real_distribution<float>(from, to)(random); };
    for (int round = 0; round < 60; ++round) {
        CTimebar* bar = m_scene.create_bar(100);
        std::vector<float> all;
        for (int i = 0; i < 2; ++i) {
            std::vector<Key> keys;
            float time = number(0, 3);
            const float spread = std::pow(10.f, number(-4, 0.5f));
            for (int key = 0; key < int(number(1, 2500)); ++key, time += 1e-4f + number(0, spread))
                keys.push_back({.time = time, .value = KeyValue(VarType::Float)});
            KeyTrack track;
            track.edit({}, keys);
            bar->create_script_object()->create_var(VarType::Float)->set_keys(track);
            for (const Key& key : keys)
                all.push_back(key.time);
        }
        std::sort(all.begin(), all.end());
        m_view.axis = {.view_origin = number(0, 1) < 0.3f ? 0 : number(0, all.back()),
                       .seconds_per_pixel = std::pow(10.f, number(-2.3f, 0))};

        std::map<int, std::pair<float, float>> expected;
        for (const float time : all)
            if (const int column = column_of(m_view.axis, time); column >= 0 && column < width)
                expected.try_emplace(column, time, time).first->second.second = time;
        const KeyColumns found = key_columns(m_view.axis, bar->shown_variables(), 0, width - 1);
        ASSERT_EQ(found.columns.size(), expected.size());
        for (const KeyStack& column : found.columns)
            ASSERT_EQ(std::pair(column.first, column.last), expected[column.column]);
        const auto before = [&](float time) { return column_of(m_view.axis, time) < 0; };
        const auto first = std::partition_point(all.begin(), all.end(), before);
        ASSERT_EQ(found.before.value_or(-1), first == all.begin() ? -1 : *(first - 1));

        for (int x = 0; x < width; x += 1 + int(number(0, 5))) {
            float last = -1;
            for (const float time : all)
                if (const int distance = column_of(m_view.axis, time) - x; distance * distance < 5)
                    last = time;
            ASSERT_EQ(hover(x, 14).key, last) << x;
            ASSERT_EQ(find_row(m_view, x, bands::rows_top)->key, last) << x;
        }
    }
}
