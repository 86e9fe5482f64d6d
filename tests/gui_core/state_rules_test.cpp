// What a state puts right by itself, whoever writes it.

#include "core/field.h"
#include "gui_core/dxut_info_box.h"
#include "gui_core/dxut_radio_button.h"
#include "support/gui_fixture.h"

using namespace Qt::StringLiterals;
using namespace tarn;
using namespace tarn::test;

namespace {

struct Write {
    const char* field;
    Value value;
};

struct Rule {
    const char* what;
    int type;
    std::vector<Write> writes; ///< one after another
    std::vector<Write> expected;
};

const QStringList three{u"a"_s, u"b"_s, u"c"_s};

const Rule rules[] = {
    {"a value beyond the range goes to its end", DXUT_CONTROL_SLIDER, {{"value", 1000}}, {{"value", 100}}},
    {"an end that moves takes the value along", DXUT_CONTROL_SLIDER, {{"min", 70}}, {{"value", 70}, {"max", 100}}},
    {"an end that crosses the other takes it along, too",
     DXUT_CONTROL_SLIDER,
     {{"min", 300}},
     {{"min", 300}, {"max", 300}, {"value", 300}}},
    {"the end written last stays",
     DXUT_CONTROL_SLIDER,
     {{"min", 300}, {"max", -5}},
     {{"min", -5}, {"max", -5}, {"value", -5}}},
    {"a position beyond the range goes to its end", DXUT_CONTROL_SCROLLBAR, {{"position", -3.7}}, {{"position", 0}}},
    {"the ends of a scroll bar hold each other",
     DXUT_CONTROL_SCROLLBAR,
     {{"position", 60}, {"max", 20}, {"min", 50}},
     {{"min", 50}, {"max", 50}, {"position", 50}}},
    {"nothing is selected of no items", DXUT_CONTROL_COMBOBOX, {{"selected", 3}}, {{"selected", -1}}},
    {"the last item is selected for one beyond",
     DXUT_CONTROL_COMBOBOX,
     {{"items", three}, {"selected", 99}},
     {{"selected", 2}}},
    {"the selection shrinks with the items",
     DXUT_CONTROL_LISTBOX,
     {{"items", three}, {"selected", 2}, {"items", QStringList{u"x"_s}}},
     {{"selected", 0}}},
    {"and goes with the last of them",
     DXUT_CONTROL_LISTBOX,
     {{"items", three}, {"selected", 2}, {"items", QStringList()}, {"items", three}},
     {{"selected", -1}}},
    {"a text is as long as the edit box takes",
     DXUT_CONTROL_EDITBOX,
     {{"max_length", 4}, {"text", u"abcdef"_s}},
     {{"text", u"abcd"_s}}},
    {"a new limit cuts the text, between characters",
     DXUT_CONTROL_EDITBOX,
     {{"text", u"ab\U0001F600d"_s}, {"max_length", 3}},
     {{"text", u"ab"_s}}},
    {"no limit cuts nothing",
     DXUT_CONTROL_EDITBOX,
     {{"text", u"abcdef"_s}, {"max_length", 0}},
     {{"text", u"abcdef"_s}}},
    {"the oldest lines go",
     DXUT_CONTROL_INFOBOX,
     {{"lines", three}, {"max_lines", 2}},
     {{"lines", QStringList{u"b"_s, u"c"_s}}}},
    {"percent end at a hundred", DXUT_CONTROL_PROGRESS, {{"percent", 250.0}}, {{"percent", 100.0}}},
};

class StateRulesTest : public GuiTest {
protected:
    CDXUTRadioButton* radio(CDXUTDialog* home, int group, bool checked = true)
    {
        auto* made = control<CDXUTRadioButton>(home, DXUT_CONTROL_RADIOBUTTON, {0, 0, 50, 20});
        (void)set(*made, "group", group);
        (void)set(*made, "checked", checked);
        return made;
    }
    CDXUTDialog* m_home = dialog({0, 0, 800, 600});
};

} // namespace

TEST_F(StateRulesTest, hold_after_each_write)
{
    for (const Rule& rule : rules) {
        CDXUTControl* made = m_core.create_control(rule.type, m_home, {0, 0, 100, 20});
        for (const Write& write : rule.writes)
            EXPECT_TRUE(set(*made, write.field, write.value).ok()) << rule.what;
        for (const Write& expected : rule.expected)
            EXPECT_EQ(get(*made, expected.field), expected.value) << rule.what << ", " << expected.field;
    }
}

TEST_F(StateRulesTest, hold_once_for_all_that_was_read)
{
    struct Read {
        int type;
        QByteArray json;
        std::vector<Write> expected;
    };
    const Read all[] = {
        {DXUT_CONTROL_SLIDER, R"({"value":-4,"max":20,"min":30})", {{"min", 30}, {"max", 30}, {"value", 30}}},
        {DXUT_CONTROL_SCROLLBAR, R"({"position":900})", {{"position", 100}}},
        {DXUT_CONTROL_LISTBOX, R"({"selected":7,"items":["a"]})", {{"selected", 0}}},
        {DXUT_CONTROL_EDITBOX, R"({"max_length":2,"text":"abc"})", {{"text", u"ab"_s}}},
        {DXUT_CONTROL_INFOBOX, R"({"max_lines":1,"lines":["a","b"]})", {{"lines", QStringList(u"b"_s)}}},
    };
    for (const Read& read : all) {
        const StatePtr made(make_control_state(read.type));
        JsonText text("{\"o\":" + read.json + "}", u"scene.json"_s);
        ASSERT_TRUE(
            text.each_member([&](std::string_view, JsonCursor& value) { return read_state(*made, value); }).ok());
        for (const Write& expected : read.expected)
            EXPECT_EQ(made->fields().find(expected.field)->get(*made), expected.value) << read.json.toStdString();
    }
}

TEST_F(StateRulesTest, a_write_that_the_rules_undo_is_no_change)
{
    CDXUTControl* slider = m_core.create_control(DXUT_CONTROL_SLIDER, m_home, {0, 0, 100, 20});
    (void)set(*slider, "value", 100);
    const StatePtr before = slider->shared_state();
    (void)set(*slider, "value", 1000);
    EXPECT_EQ(slider->shared_state(), before);
}

TEST_F(StateRulesTest, undo_brings_back_what_a_rule_changed)
{
    CDXUTControl* slider = m_core.create_control(DXUT_CONTROL_SLIDER, m_home, {0, 0, 100, 20});
    {
        const UserAction action(m_journal, u"Max"_s);
        (void)set(*slider, "max", 10);
    }
    EXPECT_EQ(get(*slider, "value"), Value(10));
    EXPECT_TRUE(m_journal.undo());
    EXPECT_EQ(get(*slider, "value"), Value(50));
    EXPECT_EQ(get(*slider, "max"), Value(100));
}

TEST_F(StateRulesTest, guide_lines_are_in_order_without_doubles)
{
    ASSERT_TRUE(set(m_core, "vertical_guides", NumberList{30, 10, 30, 20}).ok());
    EXPECT_EQ(get(m_core, "vertical_guides"), Value(NumberList{10, 20, 30}));
}

TEST_F(StateRulesTest, an_info_box_drops_its_oldest_lines)
{
    auto* box = control<CDXUTInfoBox>(m_home, DXUT_CONTROL_INFOBOX, {0, 0, 200, 100});
    (void)set(*box, "max_lines", 3);
    for (int i = 0; i < 5; ++i)
        box->AddString(QString::number(i));
    EXPECT_EQ(box->lines(), QStringList({u"2"_s, u"3"_s, u"4"_s}));
    box->AddString(QString(1'000'000, u'x'));
    EXPECT_EQ(box->lines().back().size(), 4096);
}

TEST_F(StateRulesTest, one_radio_button_of_a_group_and_dialog_is_checked)
{
    CDXUTDialog* other = dialog({0, 0, 100, 100});
    auto* a = radio(m_home, 1);
    auto* apart = radio(m_home, 2);
    auto* elsewhere = radio(other, 1);
    auto* b = radio(m_home, 1);
    EXPECT_FALSE(a->GetChecked());
    EXPECT_TRUE(b->GetChecked() && apart->GetChecked() && elsewhere->GetChecked());
    b->clicked();
    EXPECT_TRUE(b->GetChecked()) << "a click does not clear a radio button";

    (void)set(*apart, "group", 1);
    EXPECT_TRUE(b->GetChecked() && !apart->GetChecked()) << "who comes to a group yields";
    (void)set(*b, "group", 5);
    EXPECT_TRUE(b->GetChecked()) << "nobody is there";
}

TEST_F(StateRulesTest, one_undo_brings_back_the_button_that_another_cleared)
{
    auto* a = radio(m_home, 1);
    auto* b = radio(m_home, 1, false);
    {
        const UserAction action(m_journal, u"Check"_s);
        (void)set(*b, "checked", true);
    }
    EXPECT_FALSE(a->GetChecked());
    EXPECT_TRUE(m_journal.undo());
    EXPECT_TRUE(a->GetChecked() && !b->GetChecked());
}
