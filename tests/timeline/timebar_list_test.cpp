#include "timeline_pages_fixture.h"

#include "frame/dlg_group.h"

namespace tarn::test {

namespace {

class TimebarList : public TimelinePages {
protected:
    void make(const QString& length)
    {
        m_answers.prompts.emplace_back(length);
        click_in_list(6568);
    }
    int property_page() { return m_frame.findChild<CDlgGroup*>()->shown_id(); }
};

} // namespace

TEST_F(TimebarList, a_new_timebar_takes_any_number_above_zero_and_one_hundred_seconds_otherwise)
{
    const std::pair<const char*, const char*> cases[] = {{"10", "10.0Sec"},   {"2.5", "2.5Sec"},    {"0", "100.0Sec"},
                                                         {"-5", "100.0Sec"},  {"x", "100.0Sec"},    {"3s", "3.0Sec"},
                                                         {"nan", "100.0Sec"}, {"1e999", "100.0Sec"}};
    for (const auto& [typed, shown] : cases) {
        make(QString::fromLatin1(typed));
        ASSERT_NE(bar(), nullptr);
        EXPECT_EQ(list().bar(list().get_last_sel_index()), bar());
        EXPECT_EQ(row(list().row_count() - 1)[1], QLatin1String(shown)) << typed;
    }
    EXPECT_EQ(m_answers.texts.last(), u"Input total time in second."_s);
    EXPECT_EQ(m_codes, std::vector<int>(std::size(cases), ui_timebars_changed));
    const int rows = list().row_count();
    m_answers.prompts.emplace_back(std::nullopt);
    click_in_list(6568);
    make({});
    EXPECT_EQ(list().row_count(), rows) << "cancelled, and empty";
}

TEST_F(TimebarList, a_row_tells_length_script_keys_and_objects_and_follows_changes)
{
    make(u"2.5"_s);
    EXPECT_EQ(row(0), (QStringList{u"Bar1"_s, u"2.5Sec"_s, u"0"_s, u"0"_s}));
    bar()->insert_script_key(1);
    bar()->create_object(TimerObjectType::Dialog, {m_dialog->id()});
    bar()->set_name(u"Intro"_s);
    m_scene->document().changes().tell();
    EXPECT_EQ(row(0), (QStringList{u"Intro"_s, u"2.5Sec"_s, u"1"_s, u"1"_s}));
    EXPECT_EQ(list().get_last_sel_index(), 0);
}

TEST_F(TimebarList, order_changes_keep_the_timebar_selected_and_tell_nothing)
{
    for (int i = 0; i < 3; ++i)
        make(u"1"_s);
    const CTimebar* moved = bar();
    m_codes.clear();
    const std::pair<int, const char*> steps[] = {{6014, "Bar1 Bar3 Bar2"}, {6106, "Bar3 Bar1 Bar2"},
                                                 {6014, "Bar3 Bar1 Bar2"}, {6015, "Bar1 Bar3 Bar2"},
                                                 {6013, "Bar1 Bar2 Bar3"}, {6015, "Bar1 Bar2 Bar3"}};
    for (const auto& [button, order] : steps) {
        click_in_list(button);
        EXPECT_EQ(names().join(u' '), QLatin1String(order)) << button;
        EXPECT_EQ(bar(), moved);
        EXPECT_EQ(list().bar(list().get_last_sel_index()), moved);
    }
    EXPECT_TRUE(m_codes.empty());
}

TEST_F(TimebarList, deleting_asks_with_the_name_and_a_copy_leaves_the_current_timebar)
{
    make(u"1"_s);
    click_in_list(6012);
    m_scene->document().changes().tell();
    EXPECT_EQ(names(), (QStringList{u"Bar1"_s, u"Bar1 (2)"_s}));
    EXPECT_EQ(bar()->name(), u"Bar1"_s);
    m_codes.clear();
    m_answers.buttons = {boxes::Button::Cancel, boxes::Button::Ok};
    click_in_list(6317);
    EXPECT_EQ(list().row_count(), 2);
    click_in_list(6317);
    EXPECT_EQ(m_answers.texts.last(), u"Ensure delete timebar:Bar1"_s);
    EXPECT_EQ(names(), QStringList{u"Bar1 (2)"_s});
    EXPECT_EQ(bar(), nullptr);
    EXPECT_EQ(list().get_last_sel_index(), -1);
    EXPECT_EQ(m_codes, std::vector{int(ui_timebars_changed)});
    for (const int button : {6317, 6012, 6014, 6106})
        click_in_list(button);
    EXPECT_EQ(names(), QStringList{u"Bar1 (2)"_s}) << "without a current timebar";
    ASSERT_TRUE(m_scene->journal().undo());
    m_world.broadcast(ui_scene_changed);
    EXPECT_EQ(list().row_count(), 2);
}

TEST_F(TimebarList, a_row_makes_its_timebar_current_and_brings_its_page_to_the_front)
{
    make(u"1"_s);
    make(u"1"_s);
    m_world.broadcast(ui_selection_changed);
    EXPECT_EQ(property_page(), 6376);
    m_codes.clear();
    Q_EMIT list().item_clicked(0, 0);
    EXPECT_EQ(bar()->name(), u"Bar1"_s);
    EXPECT_EQ(property_page(), 6172);
    Q_EMIT list().item_clicked(-1, -1);
    EXPECT_EQ(bar(), nullptr);
    EXPECT_EQ(m_codes, (std::vector<int>{ui_timebar_content, ui_timebar_content}));

    Q_EMIT list().item_clicked(1, 0);
    click(6200);
    list().selecte_item_by_ptr_binded(nullptr);
    Q_EMIT list().item_clicked(-1, -1);
    EXPECT_EQ(bar()->name(), u"Bar2"_s) << "the window is locked";
    EXPECT_EQ(list().get_last_sel_index(), 1);
}

TEST_F(TimebarList, code_nine_shows_the_timebar_only_in_its_mode)
{
    core().selection().menu_editing = true;
    list_page().on_set_active(false);
    m_world.broadcast(ui_mode_entered);
    EXPECT_EQ(property_page(), 6376);
    list_page().on_set_active(true);
    m_world.broadcast(ui_mode_entered);
    EXPECT_EQ(property_page(), 6172);
    EXPECT_FALSE(core().selection().menu_editing);
    EXPECT_TRUE(core().selection().editing);
    list_page().on_set_active(false);
    m_world.broadcast(ui_mode_entered);
    EXPECT_EQ(property_page(), 6376) << "the other mode has no timebar";
}

TEST_F(TimebarList, the_current_timebar_drives_the_scene_in_its_mode_only)
{
    record_at({0, 2});
    bar()->objects().front()->channel_variable(Channel::Position)->set_key_value(2, KeyValue::vec(300, 50, 0));
    m_scene->document().changes().tell();
    const auto x = [this] { return m_dialog->dialog_state().x; };
    EXPECT_EQ(x(), 300);
    list_page().on_set_active(false);
    EXPECT_EQ(x(), 100) << "as authored";
    list_page().on_set_active(true);
    EXPECT_EQ(x(), 300);
    m_scene->play(true);
    EXPECT_EQ(x(), 100) << "a preview shows what plays";
    m_scene->play(false);
    EXPECT_EQ(x(), 300);
    Q_EMIT list().item_clicked(-1, -1);
    EXPECT_EQ(x(), 100) << "no timebar";
}

TEST_F(TimebarList, a_right_click_selects_and_offers_the_commands)
{
    make(u"1"_s);
    make(u"1"_s);
    m_answers.commands = {1};
    m_answers.prompts.emplace_back(u"Intro"_s);
    Q_EMIT list().menu_requested(0, {});
    EXPECT_EQ(bar()->name(), u"Intro"_s);
    EXPECT_EQ(m_scene->journal().undo_name(), u"Rename Timebar"_s);
    m_answers.commands = {6013};
    Q_EMIT list().menu_requested(0, {});
    EXPECT_EQ(names(), (QStringList{u"Bar2"_s, u"Intro"_s}));
    m_answers.commands = {0};
    Q_EMIT list().menu_requested(-1, {});
    EXPECT_EQ(bar(), nullptr);
}

TEST_F(TimebarList, nothing_is_made_or_deleted_while_the_interface_runs)
{
    make(u"1"_s);
    m_scene->play(true);
    for (const int button : {6568, 6317, 6012})
        click_in_list(button);
    EXPECT_EQ(list().row_count(), 1);
    m_scene->play(false);
}

} // namespace tarn::test
