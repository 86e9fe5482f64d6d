#include "support/attributes.h"
#include "timeline_pages_fixture.h"

#include "timeline/key_rows.h"
#include "timeline/key_table.h"
#include "timeline/key_table_edit.h"
#include "timeline/key_table_model.h"

#include <QClipboard>
#include <QDockWidget>
#include <QGuiApplication>

#include <random>

namespace tarn::test {

namespace {

class KeyTableTest : public TimelinePages {
protected:
    CTVar* variable(const QString& name, VarType type, std::initializer_list<float> times)
    {
        CTVar* made = object()->create_var(type, name);
        for (const float time : times)
            made->set_key_value(time, type == VarType::Int ? KeyValue::whole(int(time)) : KeyValue::number(time));
        return made;
    }
    CTCommandScript* object()
    {
        if (!bar())
            animation().create_bar(100);
        if (bar()->objects().empty())
            bar()->create_script_object()->set_script(u"go()"_s);
        return static_cast<CTCommandScript*>(bar()->objects().front());
    }
    KeyPlace key(CTVar* variable, qsizetype index) { return {variable, index}; }
    std::vector<float> times(const CTVar* variable)
    {
        std::vector<float> all;
        variable->keys().each_time(0, 1e6f, [&](qsizetype, float time) { all.push_back(time); });
        return all;
    }
};

} // namespace

TEST_F(KeyTableTest, rows_stand_as_a_plain_sort_has_them)
{
    std::mt19937 random(7);
    std::vector<CTVar*> variables;
    for (const char16_t* name : {u"b", u"c", u"a"}) {
        variables.push_back(object()->create_var(VarType::Float, QString::fromUtf16(name)));
        KeyTrack track;
        for (int i = 0; i < 700; ++i)
            track.set_key({float(random() % 1000) / 8, KeyValue::number(float(random() % 50)), float(random() % 100)});
        variables.back()->set_keys(track);
    }
    const auto number = [](KeyPlace place, KeyColumn column) {
        switch (column) {
        case KeyColumn::Time: return double(place.time());
        case KeyColumn::Content: return double(place.variable->keys().value(place.key).part(0));
        case KeyColumn::Ease: return double(place.variable->keys().ease(place.key));
        default: return double(place.variable->name().at(0).unicode());
        }
    };
    for (const KeyColumn column : {KeyColumn::Time, KeyColumn::Variable, KeyColumn::Content, KeyColumn::Ease})
        for (const bool descending : {false, true}) {
            KeyRows rows;
            rows.set(variables, column, descending);
            for (qsizetype row = 0; row < rows.size(); ++row) {
                const KeyPlace place = rows.at(row);
                ASSERT_NE(place.variable, nullptr);
                ASSERT_EQ(rows.row_of(place.variable, place.time()), row) << int(column);
                if (row == 0)
                    continue;
                const double before = number(rows.at(row - 1), column);
                ASSERT_TRUE(descending ? before >= number(place, column) : before <= number(place, column)) << row;
            }
        }
}

TEST_F(KeyTableTest, rows_whose_keys_went_are_empty_until_they_are_shown_anew)
{
    CTVar* a = variable(u"a"_s, VarType::Float, {0, 1, 2, 3});
    KeyRows rows;
    rows.set({a}, KeyColumn::Time, false);
    bar()->remove_keys({{a, {1, 2, 3}}});
    EXPECT_EQ(rows.at(0).variable, a);
    EXPECT_EQ(rows.at(3).variable, nullptr);
}

TEST_F(KeyTableTest, many_keys_change_each_by_its_own_number_in_one_step)
{
    CTVar* a = variable(u"a"_s, VarType::Float, {0, 1, 2});
    CTVar* n = variable(u"n"_s, VarType::Int, {1, 5});
    const std::size_t steps = m_scene->journal().step_count();
    EXPECT_EQ(edit_keys(*bar(), {key(a, 1), key(a, 2), key(n, 1)}, KeyColumn::Content, u"*3"_s).size(), 2u);
    EXPECT_EQ(a->value_at(2), KeyValue::number(6));
    EXPECT_EQ(n->value_at(5), KeyValue::whole(15));
    EXPECT_EQ(m_scene->journal().step_count(), steps + 1);
    edit_keys(*bar(), {key(a, 1), key(n, 1)}, KeyColumn::Ease, u"500"_s);
    EXPECT_EQ(a->get_ease(1), 100);
    EXPECT_TRUE(edit_keys(*bar(), {key(a, 1)}, KeyColumn::Ease, u"x"_s).empty());

    const KeySelection moved = edit_keys(*bar(), {key(a, 1), key(a, 2)}, KeyColumn::Time, u"+10"_s);
    EXPECT_EQ(moved.at(a), (std::vector<float>{11, 12}));
    EXPECT_EQ(times(a), (std::vector<float>{0, 11, 12}));
    EXPECT_TRUE(edit_keys(*bar(), {key(a, 1), key(a, 2)}, KeyColumn::Time, u"5"_s).empty()) << "two cannot stand there";
    EXPECT_TRUE(edit_keys(*bar(), {key(a, 0)}, KeyColumn::Time, u"5"_s).empty()) << "the first key stays";
    edit_keys(*bar(), {key(a, 1)}, KeyColumn::Time, u"-1"_s);
    EXPECT_EQ(times(a), (std::vector<float>{0, 11, 12})) << "no time";
}

TEST_F(KeyTableTest, times_are_frames_where_the_timebar_shows_them)
{
    CTVar* a = variable(u"a"_s, VarType::Float, {0, 1, 1.01f});
    ASSERT_TRUE(set(*bar(), "frame_rate", qint64(24)));
    ASSERT_TRUE(set(*bar(), "display_mode", qint64(TimebarState::frames_mode)));
    EXPECT_EQ(key_text(*bar(), key(a, 1), KeyColumn::Time), u"24"_s);
    EXPECT_EQ(key_text(*bar(), key(a, 2), KeyColumn::Time), u"24.24"_s);
    edit_keys(*bar(), {key(a, 1)}, KeyColumn::Time, u"7"_s);
    EXPECT_EQ(times(a)[1], frame_time(7, 24));
}

TEST_F(KeyTableTest, a_spreadsheet_gives_back_what_it_took)
{
    CTVar* a = variable(u"a"_s, VarType::Float, {0, 0.1f, 2});
    a->set_key_ease(2, -30);
    a->set_key_group(2, 4);
    variable(u"n"_s, VarType::Int, {0});
    const KeyTrack before = a->keys();
    const QString text = text_of_keys(*bar(), {key(a, 0), key(a, 1), key(a, 2)});
    EXPECT_EQ(text.split(u'\n')[2], u"2\tScript:go()\ta\t2\t-30"_s);
    EXPECT_EQ(paste_keys(*bar(), text).written, 3);
    EXPECT_TRUE(a->keys() == before) << "with the groups";
    const PastedKeys pasted = paste_keys(*bar(),
                                         u"5\tScript:go()\ta\t7\r\n1\tScript:go()\tz\t7\n-1\tScript:go()\ta\t7\n"
                                         u"6\tScript:go()\tn\tx\nTime\tObject\n"_s);
    EXPECT_EQ(pasted.written, 1);
    EXPECT_EQ(pasted.refused.size(), 4);
    EXPECT_EQ(a->value_at(5), KeyValue::number(7));
}

TEST_F(KeyTableTest, the_table_shows_what_the_timeline_shows_and_edits_what_is_selected)
{
    CTVar* a = variable(u"a"_s, VarType::Float, {0, 1, 2});
    CTVar* b = variable(u"b"_s, VarType::Float, {0.5f});
    m_frame.show();
    m_frame.findChild<QDockWidget*>(u"CTimerControlBar"_s)->show();
    m_world.broadcast(ui_timebars_changed);
    click(6883);
    auto& table = *tools().findChild<KeyTable*>();
    auto& model = *static_cast<KeyTableModel*>(table.model());
    ASSERT_EQ(model.rowCount(), 4);
    EXPECT_EQ(model.index(1, 2).data().toString(), u"b"_s) << "by time";
    EXPECT_FALSE(model.index(0, 0).flags() & Qt::ItemIsEditable);

    table.selectAll();
    EXPECT_TRUE(model.setData(model.index(2, 3), u"+1"_s, Qt::EditRole));
    EXPECT_EQ(a->value_at(2), KeyValue::number(3));
    EXPECT_EQ(b->value_at(0.5f), KeyValue::number(1.5f));
    table.clearSelection();
    EXPECT_TRUE(model.setData(model.index(2, 0), u"9"_s, Qt::EditRole));
    EXPECT_EQ(times(a), (std::vector<float>{0, 2, 9}));
    EXPECT_EQ(table.currentIndex().row(), 3) << "the key is followed to its place";

    table.selectRow(3);
    table.copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"9\tScript:go()\ta\t2\t0\n"_s);
    table.remove();
    EXPECT_EQ(model.rowCount(), 3);
    table.paste();
    EXPECT_EQ(model.rowCount(), 4);
    a->add_key(20);
    m_scene->document().changes().tell();
    EXPECT_EQ(model.rowCount(), 5) << "whoever made it";
    choose(6158, 0);
    choose(6156, 1);
    EXPECT_EQ(model.rowCount(), 1) << "the current variable's";
    animation().set_current_bar(nullptr);
    m_world.broadcast(ui_timebar_content);
    EXPECT_EQ(model.rowCount(), 0);
}

} // namespace tarn::test
