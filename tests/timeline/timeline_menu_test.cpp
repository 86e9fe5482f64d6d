#include "support/attributes.h"
#include "timeline_fixture.h"

#include "frame/child_dlg.h"

#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>

using namespace tarn;
using namespace tarn::test;

namespace {

constexpr int keys_y = 10;
constexpr int scripts_y = 60;
const QString section_question = QStringLiteral("Delete the selected timebar section?");

class TimelineMenu : public TimelineTest {
protected:
    /// What the menu at that place offers, by its numbers.
    QSet<int> offered(int x, int y)
    {
        struct Looker final : boxes::Responder {
            boxes::Button message(QWidget*, const boxes::Message&) override { return boxes::Button::Cancel; }
            std::optional<QString> prompt(QWidget*, const boxes::Prompt&) override { return {}; }
            QString file(QWidget*, const boxes::File&) override { return {}; }
            int menu(QWidget*, const boxes::Menu& menu) override
            {
                for (const boxes::MenuItem& item : menu.items)
                    if (item.id && item.enabled)
                        enabled.insert(item.id);
                return 0;
            }
            std::optional<QColor> color(QWidget*, const QColor&) override { return {}; }
            int dialog(QDialog&) override { return 0; }
            QSet<int> enabled;
        } looker;
        boxes::set_responder(&looker);
        mouse(QEvent::MouseButtonPress, x, y, {}, Qt::RightButton);
        mouse(QEvent::MouseButtonRelease, x, y, {}, Qt::RightButton);
        boxes::set_responder(&m_answers);
        return looker.enabled;
    }
    /// What boxes and prompts said since the last call.
    QString said()
    {
        QStringList texts = std::exchange(m_answers.texts, {});
        texts.removeIf([](const QString& text) { return text.contains(QRegularExpression(u"^\\d"_s)); });
        return texts.join(u" | "_s);
    }
    void pick_function(const QString& filter, int button)
    {
        m_answers.dialogs.push_back([=](QDialog& dialog) {
            auto* page = dialog.findChild<CChildDlg*>();
            static_cast<QLineEdit*>(page->control(6881))->setText(filter);
            QMetaObject::invokeMethod(page->control(button), "click");
        });
    }
    void select_section(int from, int to)
    {
        click(from, 70);
        drag({to, 5}, {to, 6}, Qt::ShiftModifier);
    }
};

} // namespace

TEST_F(TimelineMenu, offers_what_applies_to_the_place)
{
    const QSet<int> anywhere = {32828, 32815, 32829, 32832, 32830, 32823, 32825};
    EXPECT_EQ(offered(300, 70), anywhere + QSet<int>({32798}));
    EXPECT_EQ(offered(120, scripts_y), anywhere + QSet<int>({32800, 32801, 32820}));
    EXPECT_EQ(offered(40, keys_y), anywhere + QSet<int>({32798, 32826, 32827, 32819, 32824}));
    select_section(20, 60);
    EXPECT_EQ(offered(300, 70), anywhere + QSet<int>({32798, 32800, 32826, 32824, 32839, 32821}));
    m_animation->set_current_bar(nullptr);
    EXPECT_EQ(offered(300, 70), QSet<int>({32828}));

    m_animation->set_current_bar(m_bar);
    m_timeline.redraw();
    choose(0, 300);
    EXPECT_EQ(m_answers.texts.filter(QRegularExpression(u"^0 "_s)).size(), 3);
    EXPECT_EQ(m_answers.texts.size(), 20);
    EXPECT_EQ(m_answers.texts[1], u"0 "_s);
    VLCMsgIniW::set_language(Language::Chinese);
    choose(0, 300);
    EXPECT_TRUE(m_answers.texts.contains(u"32832 插入时间轴..."_s));
}

TEST_F(TimelineMenu, goes_to_typed_times)
{
    struct Case {
        bool frames;
        const char* answer;
        float time;
    };
    for (const Case& row : {Case{false, "2.5", 2.5f},
                            {false, "-3", 0},
                            {false, "99", 10},
                            {false, "", 1},
                            {false, "soon", 1},
                            {false, "nan", 1},
                            {true, "30", frame_time(30, 25)},
                            {true, "12.5", 0.5f}}) {
        ASSERT_TRUE(
            set(*m_bar, "display_mode", qint64(row.frames ? TimebarState::frames_mode : TimebarState::seconds_mode)));
        m_timeline.set_current_time(1);
        answer_prompt(QLatin1String(row.answer));
        choose(32828, 300);
        EXPECT_EQ(m_timeline.current_time(), row.time) << row.answer;
        EXPECT_EQ(said(), row.frames ? u"Input a target frame"_s : u"Input a target point"_s);
    }
    ASSERT_TRUE(set(*m_bar, "frame_rate", qint64(0)));
    answer_prompt(u"3"_s);
    choose(32828, 300);
    EXPECT_EQ(m_timeline.current_time(), 3) << "a rate below 1 is 1";
}

TEST_F(TimelineMenu, inserts_moves_and_deletes_script_keys)
{
    pick_function(u"bell"_s, 6883);
    choose(32798, 240); // 6 seconds
    EXPECT_EQ(m_bar->get_script_name(6), u"bell"_s);
    EXPECT_NE(m_animation->functions()->find_function(u"bell"_s), nullptr);
    pick_function(u"EL"_s, 1);
    choose(32798, 280);
    EXPECT_EQ(m_bar->get_script_name(7), u"bell"_s);
    pick_function({}, 6883);
    choose(32798, 320);
    EXPECT_FALSE(m_bar->get_script_name(8).isEmpty());
    const std::size_t functions = m_animation->functions()->functions().size();
    journal().undo();
    EXPECT_EQ(m_animation->functions()->functions().size(), functions - 1);
    pick_function({}, 2);
    choose(32798, 320);
    EXPECT_FALSE(m_bar->is_script_key_time(8));
    said();

    answer_prompt(u"5"_s);
    answer_box(boxes::Button::Ok);
    choose(32820, 240, scripts_y);
    EXPECT_EQ(said(), u"Input a target point | There is a script here already!"_s);
    answer_prompt(u"90"_s);
    choose(32820, 240, scripts_y);
    EXPECT_EQ(m_bar->get_script_name(10), u"bell"_s);
    said();

    answer_box(boxes::Button::Cancel);
    choose(32800, 120, scripts_y);
    EXPECT_TRUE(m_bar->is_script_key_time(3));
    answer_box(boxes::Button::Ok);
    choose(32800, 120, scripts_y);
    EXPECT_FALSE(m_bar->is_script_key_time(3));
    EXPECT_EQ(said(), u"Remove Seletede Script? | Remove Seletede Script?"_s);
}

TEST_F(TimelineMenu, opens_the_script_of_a_key)
{
    m_answers.dialogs.push_back([](QDialog& dialog) { dialog.reject(); });
    choose(32801, 120, scripts_y);
    EXPECT_NE(m_animation->functions()->find_function(u"open"_s), nullptr);
    m_answers.dialogs.push_back([](QDialog& dialog) { dialog.reject(); });
    double_click(200, scripts_y);
    EXPECT_NE(m_animation->functions()->find_function(u"close"_s), nullptr);
}

TEST_F(TimelineMenu, edits_moves_and_deletes_keys)
{
    answer_prompt(u"7, 8, 9"_s);
    choose(32827, 40, keys_y);
    EXPECT_EQ(m_place->value_at(1), KeyValue::vec(7, 8, 9));
    answer_prompt(u"7, eight"_s);
    double_click(40, keys_y);
    EXPECT_EQ(m_place->value_at(1), KeyValue::vec(7, 8, 9));
    EXPECT_EQ(said(), u"Input key value. | Input a key value"_s);

    answer_box(boxes::Button::Ok);
    choose(32819, 0, keys_y);
    EXPECT_EQ(said(), u"First key can not be moved!"_s);
    answer_prompt(u"3.01"_s);
    choose(32819, 40, keys_y);
    EXPECT_EQ(times(m_place), (Times{0, 2, 3.01f, 4})) << "what is typed does not snap";
    said();

    m_timeline.clear_selection();
    key(Qt::Key_A, Qt::ControlModifier);
    answer_box(boxes::Button::Ok);
    answer_box(boxes::Button::Ok);
    choose(32826, 300);
    EXPECT_EQ(said(), u"Remove Seletede Key frames? | First key can not be removed!"_s);
    EXPECT_EQ(times(m_place), (Times{0}));
    EXPECT_EQ(m_bar->script_key_times(), (Times{3, 5}));
    EXPECT_EQ(undo_all(), 3);
}

TEST_F(TimelineMenu, asks_for_the_ease_of_a_span)
{
    m_bar->set_current_object(m_object);
    answer_prompt(u"-500"_s);
    double_click(60, 50);
    EXPECT_EQ(m_place->get_ease(2), -100);
    EXPECT_EQ(said(), u"Ease"_s);
}

TEST_F(TimelineMenu, records_the_selected_objects_at_the_cursor)
{
    m_scene->gui_core().selection().add(m_dialog);
    m_scene->gui_core().selection().current_dialog = m_dialog;
    click(240, 70);
    choose(32815, 300);
    EXPECT_TRUE(m_object->has_key(6));
}

TEST_F(TimelineMenu, deletes_sections)
{
    select_section(20, 60); // from 0.5 to 1.5 seconds
    answer_box(boxes::Button::Cancel);
    choose(32839, 300);
    EXPECT_FALSE(journal().can_undo());
    answer_box(boxes::Button::Ok);
    choose(32839, 300);
    EXPECT_EQ(times(m_place), (Times{0, 1, 3}));
    EXPECT_EQ(m_bar->script_key_times(), (Times{2, 4}));
    EXPECT_EQ(m_bar->get_total_length(), 10);
    EXPECT_EQ(said().left(39), u"All KeyFrames and Scripts in selected s"_s);
    EXPECT_FALSE(view().range_select);
    EXPECT_EQ(undo_all(), 1);

    for (const int command : {32800, 32826}) {
        select_section(20, 60);
        answer_box(boxes::Button::Ok);
        choose(command, 300);
        EXPECT_EQ(said(), section_question);
        EXPECT_EQ(times(m_place), (Times{0, 1, 3}));
        EXPECT_EQ(m_bar->get_total_length(), 9);
        EXPECT_EQ(undo_all(), 1);
    }
    select_section(100, 140); // with the script key at 3 seconds, which is dropped off
    answer_box(boxes::Button::Ok);
    answer_box(boxes::Button::Ok);
    press(120, scripts_y, Qt::ShiftModifier);
    wait(101);
    move(120, 450);
    release(120, 450);
    EXPECT_EQ(said(), u"Remove Seletede Script? | "_s + section_question);
    // The section ends at the cursor, which the press has moved onto the script key.
    EXPECT_EQ(m_bar->script_key_times(), (Times{2.5f, 4.5f}));
}

TEST_F(TimelineMenu, inserts_time_and_other_timebars)
{
    const auto insert = [&](const char* answer) {
        click(60, 70); // 1.5 seconds
        answer_prompt(QLatin1String(answer));
        choose(32829, 300);
    };
    for (const char* nothing : {"-1", "0", "", "x"}) {
        insert(nothing);
        EXPECT_FALSE(journal().can_undo()) << nothing;
    }
    insert("2");
    EXPECT_EQ(times(m_place), (Times{0, 1, 4, 6}));
    EXPECT_EQ(m_bar->get_total_length(), 12);
    ASSERT_TRUE(set(*m_bar, "display_mode", qint64(TimebarState::frames_mode)));
    said();
    insert("25");
    EXPECT_EQ(said(), u"Input the length of new insert frames"_s);
    EXPECT_EQ(m_bar->get_total_length(), 13);

    CTimebar* other = m_animation->create_bar(3, u"Other"_s);
    other->insert_script_key(1, u"ring"_s);
    m_animation->set_current_bar(m_bar);
    m_timeline.redraw();
    for (const Language language : {Language::Chinese, Language::English})
        for (const char* name : {"Intro", "Nobody"}) {
            VLCMsgIniW::set_language(language);
            answer_prompt(QLatin1String(name));
            answer_box(boxes::Button::Ok);
            choose(32832, 300);
            EXPECT_TRUE(said().endsWith(u"无法插入时间轴自身！请选择不同的时间轴,或检查时间轴名称是否重复。"_s));
        }
    answer_prompt(u"Other"_s);
    click(60, 70);
    choose(32832, 300);
    EXPECT_EQ(m_bar->get_total_length(), 16);
    EXPECT_EQ(m_bar->get_script_name(m_timeline.current_time() + 1), u"ring"_s);
}

TEST_F(TimelineMenu, moves_ends_of_the_section)
{
    select_section(20, 60);
    answer_box(boxes::Button::Ok);
    choose(32821, 300);
    EXPECT_EQ(said(), u"Please select a target point"_s);
    answer_prompt(u"3.5"_s);
    choose(32821, 60, keys_y);
    EXPECT_EQ(view().range_end(), 3.5f);
    answer_prompt(u"77"_s);
    choose(32821, 20, keys_y);
    EXPECT_EQ(view().range_begin(), 3.5f);
    EXPECT_EQ(view().range_end(), 10);
    EXPECT_EQ(view().selection.keys().at(m_place), (Times{4}));
}

TEST_F(TimelineMenu, keeps_groups_of_keys)
{
    drag({36, 90}, {84, 120}); // 1 and 2 seconds
    answer_prompt(u"12"_s);
    choose(32824, 300);
    EXPECT_EQ(m_bar->keys_of_group(12).at(m_place), (Times{1, 2}));
    m_timeline.clear_selection();
    for (const char* nothing : {"", "x", "7"}) {
        answer_prompt(QLatin1String(nothing));
        choose(32830, 300);
        EXPECT_EQ(m_timeline.current_time(), 0) << nothing;
    }
    answer_prompt(u"12"_s);
    choose(32823, 300);
    EXPECT_EQ(m_timeline.current_time(), 2);
    answer_prompt(u"12"_s);
    choose(32830, 300);
    EXPECT_EQ(m_timeline.current_time(), 1);
    said();
    answer_prompt(u"12"_s);
    choose(32825, 300);
    EXPECT_EQ(said(), u"Input selected group number"_s);
    EXPECT_EQ(view().selection.keys().at(m_place), (Times{1, 2}));
}
