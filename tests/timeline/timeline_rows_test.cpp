#include "frame/child_dlg.h"
#include "support/long_tests.h"
#include "timeline/timeline_rows.h"
#include "timeline_fixture.h"

#include <QClipboard>
#include <QMimeData>

#include <random>

using namespace tarn;
using namespace tarn::test;

namespace {

class TimelineRows : public TimelineTest {
protected:
    void SetUp() override
    {
        TimelineTest::SetUp();
        m_shown = m_object->create_channel_var(Channel::Transparency);
        for (const float time : {0.f, 2.f, 3.f})
            m_shown->set_key_value(time, KeyValue::number(time / 4));
        m_scene->document().forget_history();
    }
    /// The middle of the row: 0 the timebar's, 1 the object's, 2 and 3 those of its variables, once it is unfolded.
    static int row(int index) { return bands::rows_top + index * TimelineRow::height + TimelineRow::height / 2; }
    void unfold()
    {
        double_click(300, row(1));
        ASSERT_EQ(timeline_rows(view()).size(), 4u);
    }
    Times selected(CTVar* variable) const
    {
        const auto found = view().selection.keys().find(variable);
        return found == view().selection.keys().end() ? Times() : found->second;
    }

    CTVar* m_shown = nullptr;
};

} // namespace

TEST_F(TimelineRows, select_by_clicks_and_boxes)
{
    unfold();
    click(80, row(2));
    EXPECT_EQ(selected(m_place), (Times{2}));
    EXPECT_EQ(m_timeline.current_time(), 2);
    click(120, row(3), Qt::ShiftModifier);
    EXPECT_EQ(selected(m_shown), (Times{3}));
    click(80, row(2), Qt::ControlModifier);
    EXPECT_TRUE(selected(m_place).empty());
    click(80, row(1)); // all of the object's at that time
    EXPECT_EQ(selected(m_place), (Times{2}));
    EXPECT_EQ(selected(m_shown), (Times{2}));

    drag({100, row(3)}, {30, row(2)});
    EXPECT_EQ(selected(m_place), (Times{1, 2}));
    EXPECT_EQ(selected(m_shown), (Times{2}));
    drag({100, row(3) + 2}, {130, row(3)}, Qt::ShiftModifier);
    EXPECT_EQ(selected(m_shown), (Times{2, 3}));
    drag({130, row(3)}, {70, row(3) + 1}, Qt::ControlModifier);
    EXPECT_TRUE(selected(m_shown).empty());
    EXPECT_EQ(selected(m_place), (Times{1, 2}));
    press(250, row(3));
    wait(101);
    move(10, row(0));
    key(Qt::Key_Escape);
    EXPECT_EQ(selected(m_place), (Times{1, 2}));
    EXPECT_TRUE(view().rows.box.isNull());
    release(10, row(0));
    click(250, row(2));
    EXPECT_TRUE(view().selection.is_empty());
    EXPECT_EQ(m_bar->current_object(), m_object);
    EXPECT_EQ(m_object->current_variable(), m_place);
    EXPECT_FALSE(journal().can_undo());
}

TEST_F(TimelineRows, move_all_keys_of_a_time_by_the_summary)
{
    drag({80, row(0)}, {100, row(0)});
    EXPECT_EQ(times(m_place), (Times{0, 1, 2.5f, 4}));
    EXPECT_EQ(times(m_shown), (Times{0, 2.5f, 3}));
    drag({100, row(0)}, {120, row(0)}); // One pushes out what stands where it comes.
    EXPECT_EQ(times(m_shown), (Times{0, 3}));
    EXPECT_EQ(undo_all(), 2);
    EXPECT_EQ(times(m_shown), (Times{0, 2, 3}));
}

TEST_F(TimelineRows, leave_locked_objects_alone)
{
    m_timeline.press_name({timeline_rows(view())[1], RowPart::Lock});
    EXPECT_TRUE(view().rows.locked.contains(m_object->id()));
    drag({80, row(1)}, {120, row(1)});
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(view().selection.keys().empty());
    EXPECT_FALSE(journal().can_undo());
}

TEST_F(TimelineRows, have_a_menu_for_what_is_selected)
{
    unfold();
    const auto select_places = [this] { drag({30, row(2) - 4}, {170, row(2)}); };
    select_places();
    choose(33035, 300, row(0)); // mirror
    EXPECT_EQ(times(m_place), (Times{0, 1, 3, 4}));
    EXPECT_EQ(m_place->value_at(1).part(0), 400);
    EXPECT_EQ(undo_all(), 1);

    select_places();
    choose(33022, 300, row(0));
    EXPECT_EQ(m_place->get_ease(2), 70);
    m_timeline.set_current_time(6);
    choose(33034, 300, row(0)); // the last to the cursor
    EXPECT_EQ(times(m_place), (Times{0, 3, 4, 6}));
    EXPECT_EQ(m_place->get_ease(4), 70) << "eases go along";
    answer_prompt(u"0.51"_s);
    choose(33031, 300, row(0));
    EXPECT_EQ(times(m_place)[1], 0.51f);
    answer_prompt(u"5,5,5"_s);
    choose(33032, 300, row(0));
    EXPECT_EQ(m_place->value_at(9), KeyValue::vec(5, 5, 5));
    EXPECT_EQ(undo_all(), 4);

    m_timeline.set_current_time(2);
    choose(33013, 300, row(0));
    EXPECT_EQ(selected(m_place), (Times{0, 1}));
    choose(33012, 300, row(0));
    EXPECT_EQ(selected(m_place), (Times{2, 4}));
    EXPECT_EQ(view().selection.scripts(), (Times{3, 5}));
    choose(33014, 300, row(0));
    EXPECT_EQ(selected(m_place), (Times{4}));
    choose(33062, 300, row(0));
    EXPECT_GT(m_timeline.view_origin(), 2);
    choose(33061, 300, row(0));
    EXPECT_EQ(m_timeline.view_origin(), 0);
}

TEST_F(TimelineRows, are_filtered_by_name_and_by_selection_from_the_menu)
{
    const auto objects = [this] { return int(timeline_rows(view()).size()) - 1; };
    m_bar->create_script_object();
    ASSERT_EQ(objects(), 2);
    answer_prompt(m_object->name());
    choose(33064, 300, row(0));
    EXPECT_EQ(objects(), 1);
    choose(33064, 300, row(0));
    EXPECT_EQ(objects(), 2);
    m_bar->set_current_object(nullptr);
    choose(33063, 300, row(0));
    EXPECT_EQ(objects(), 0);
    choose(33063, 300, row(0));
    EXPECT_EQ(objects(), 2);
}

TEST_F(TimelineRows, have_a_menu_for_objects_variables_and_marks)
{
    CTCommandScript* command = m_bar->create_script_object();
    m_answers.commands = {33041, 32783};
    answer_prompt(u"2.5"_s);
    mouse(QEvent::MouseButtonPress, 300, row(2), {}, Qt::RightButton);
    ASSERT_EQ(command->variables().size(), 1u);
    EXPECT_EQ(command->variables()[0]->value_at(0), KeyValue::number(2.5f));
    answer_box(boxes::Button::Ok);
    choose(33042, 300, row(3));
    EXPECT_TRUE(command->variables().empty());

    CDXUTDialog* other = core().create_dialog({0, 0, 50, 50}, u"Chest"_s);
    m_scene->gui_core().selection().clear_dialogs();
    m_scene->gui_core().selection().add(other);
    m_scene->gui_core().selection().current_dialog = other;
    choose(33044, 300, row(1));
    EXPECT_EQ(m_object->target().id, other->id());
    EXPECT_EQ(m_place->keys().size(), 4);

    m_timeline.set_current_time(7);
    answer_prompt(u"wave"_s);
    choose(33051, 300, row(0));
    ASSERT_NE(m_bar->mark_at(7), nullptr);
    answer_prompt(u"storm"_s);
    double_click(280, 10);
    EXPECT_EQ(m_bar->mark_at(7)->name(), u"storm"_s);
    answer_box(boxes::Button::Ok);
    choose(33052, 300, row(0));
    EXPECT_TRUE(m_bar->marks().empty());
    answer_box(boxes::Button::Cancel);
    choose(33043, 300, row(1));
    answer_box(boxes::Button::Ok);
    choose(33043, 300, row(1));
    EXPECT_EQ(m_bar->objects().size(), 1u);
}

TEST_F(TimelineRows, are_edited_by_the_keyboard)
{
    m_timeline.set_current_time(0.5f);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    ASSERT_EQ(timeline_rows(view()).size(), 4u);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Down); // The last row stays.
    key(Qt::Key_Right);
    EXPECT_EQ(m_timeline.current_time(), 2);
    EXPECT_EQ(selected(m_shown), (Times{2}));
    answer_prompt(u"0.75"_s);
    key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(m_shown->value_at(2), KeyValue::number(0.75f));
    key(Qt::Key_Right, Qt::AltModifier);
    key(Qt::Key_Right, Qt::AltModifier);
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(times(m_shown)[1], frame_time(51, 25));
    EXPECT_EQ(undo_all(), 4);
    m_timeline.set_current_time(1.5f);
    key(Qt::Key_Right);
    key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(selected(m_shown), (Times{2, 3}));
    key(Qt::Key_Up);
    key(Qt::Key_Left);
    EXPECT_EQ(selected(m_place), (Times{2}));
    key(Qt::Key_Period);
    EXPECT_EQ(m_timeline.current_time(), frame_time(51, 25));
    m_timeline.set_current_time(2.05f);
    key(Qt::Key_Comma);
    EXPECT_EQ(m_timeline.current_time(), frame_time(51, 25)) << "the begin of the frame that is under way";
    key(Qt::Key_End);
    EXPECT_EQ(m_timeline.current_time(), 10);
    key(Qt::Key_Home);
    key(Qt::Key_Comma);
    EXPECT_EQ(m_timeline.current_time(), 0);
    answer_box(boxes::Button::Ok);
    key(Qt::Key_Delete);
    EXPECT_EQ(times(m_place), (Times{0, 1, 4}));
    key(Qt::Key_Space);
    EXPECT_TRUE(m_bar->is_playing());
    key(Qt::Key_Space);
    EXPECT_FALSE(m_bar->is_playing());
}

TEST_F(TimelineRows, go_through_the_clipboard)
{
    unfold();
    QGuiApplication::clipboard()->clear();
    key(Qt::Key_V, Qt::ControlModifier);
    drag({30, row(2) - 4}, {90, row(2)});
    key(Qt::Key_C, Qt::ControlModifier);
    m_timeline.set_current_time(6);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(times(m_place), (Times{0, 1, 2, 4, 6, 7}));
    EXPECT_EQ(selected(m_place), (Times{6, 7}));
    m_timeline.set_current_time(8);
    choose(33004, 700, row(0));
    EXPECT_EQ(selected(m_place), (Times{8, 9}));
    key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(times(m_place), (Times{0, 1, 2, 4, 6, 7}));
    EXPECT_EQ(undo_all(), 3);

    CTimebar* other = m_animation->create_bar(5, u"Other"_s); // where the variable is made
    m_timeline.redraw();
    choose(33003, 700, row(0));
    ASSERT_EQ(other->objects().size(), 1u);
    EXPECT_EQ(other->objects()[0]->target().id, m_dialog->id());

    auto* broken = new QMimeData;
    broken->setData(u"application/x-tarn-keys"_s, "{\"keys\":[");
    QGuiApplication::clipboard()->setMimeData(broken);
    answer_box(boxes::Button::Ok);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(m_answers.buttons.empty());
}

TEST_F(TimelineRows, loop_a_section_and_scroll)
{
    click(40, 70);
    drag({120, 5}, {120, 6}, Qt::ShiftModifier);
    choose(33053, 700, row(0));
    EXPECT_TRUE(m_bar->has_loop());
    EXPECT_EQ(m_bar->loop_to(), 3);
    click(300, 70);
    choose(33053, 700, row(0));
    EXPECT_FALSE(m_bar->has_loop());

    unfold();
    m_timeline.resize(800, 100);
    wheel(100, row(0), -120);
    EXPECT_EQ(view().rows.scroll, 4 * TimelineRow::height - 20);
    mouse(QEvent::MouseButtonPress, 300, row(0), {}, Qt::MiddleButton);
    move(200, row(0) + 10);
    mouse(QEvent::MouseButtonRelease, 200, row(0), {}, Qt::MiddleButton);
    EXPECT_EQ(view().rows.scroll, 4 * TimelineRow::height - 30);
    EXPECT_FLOAT_EQ(m_timeline.view_origin(), 2.5f);
    mouse(QEvent::MouseButtonPress, 300, 30, {}, Qt::MiddleButton);
    move(200, 30);
    EXPECT_FLOAT_EQ(m_timeline.view_origin(), 2.5f) << "in the bands it does nothing";
}

TEST_F(TimelineRows, give_back_equal_bytes_after_random_edits)
{
    /// Answers everything, mostly with yes.
    struct Anything final : boxes::Responder {
        explicit Anything(std::mt19937& numbers) : random(numbers) {}
        int up_to(int most) { return int(random() % unsigned(most + 1)); }
        boxes::Button message(QWidget*, const boxes::Message&) override
        {
            return up_to(5) ? boxes::Button::Ok : boxes::Button::Cancel;
        }
        std::optional<QString> prompt(QWidget*, const boxes::Prompt&) override
        {
            const char* answers[] = {"1.5", "0.04", "7", "", "1,2,3", "Intro", "Other", "12"};
            return QLatin1String(answers[up_to(7)]);
        }
        QString file(QWidget*, const boxes::File&) override { return {}; }
        int menu(QWidget*, const boxes::Menu& menu) override
        {
            const boxes::MenuItem& item = menu.items[std::size_t(up_to(int(menu.items.size()) - 1))];
            const bool removes = item.text.contains(u"Delete"_s) || item.text.contains(u"Remove"_s);
            const bool is_rare = item.id == 33043 ? up_to(200) != 0 : removes && up_to(9) != 0;
            return item.enabled && item.id != 32801 && !is_rare ? item.id : 0;
        }
        std::optional<QColor> color(QWidget*, const QColor&) override { return {}; }
        int dialog(QDialog& dialog) override
        {
            auto* page = dialog.findChild<CChildDlg*>();
            if (page && page->control(6883))
                QMetaObject::invokeMethod(page->control(6883), "click");
            return dialog.result();
        }
        std::mt19937& random;
    };
    unfold();
    m_animation->create_bar(2, u"Other"_s)->insert_script_key(1);
    m_animation->set_current_bar(m_bar);
    m_timeline.redraw();
    m_scene->document().forget_history();
    journal().set_budget(std::size_t(4) << 30);
    const QByteArray before = text();

    std::mt19937 random(20261122);
    Anything anything(random);
    boxes::set_responder(&anything);
    const int heights[] = {5, 10, 15, 30, 50, 60, 70, row(0), row(1), row(2), row(3), row(4)};
    const auto x = [&] { return anything.up_to(9) * 40 + anything.up_to(4) - 2; };
    const auto y = [&] { return heights[anything.up_to(11)]; };
    const Qt::KeyboardModifiers modifiers[] = {{}, {}, {}, Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier};
    const auto held = [&] { return modifiers[anything.up_to(5)]; };
    const std::pair<int, Qt::KeyboardModifiers> keys[] = {{Qt::Key_Right, Qt::AltModifier},
                                                          {Qt::Key_Left, Qt::AltModifier},
                                                          {Qt::Key_A, Qt::ControlModifier},
                                                          {Qt::Key_Right, {}},
                                                          {Qt::Key_Down, {}},
                                                          {Qt::Key_Up, {}},
                                                          {Qt::Key_Period, {}},
                                                          {Qt::Key_Escape, {}}};
    int made = 0;
    for (int i = test::times(1000, 10'000); i > 0; --i) {
        const std::size_t steps = journal().position();
        switch (anything.up_to(9)) {
        case 0: {
            const QPoint place(x(), y());
            mouse(QEvent::MouseButtonPress, place.x(), place.y(), {}, Qt::RightButton);
            mouse(QEvent::MouseButtonRelease, place.x(), place.y(), {}, Qt::RightButton);
            break;
        }
        case 1: {
            const auto& [code, with] = keys[anything.up_to(7)];
            key(code, with);
            break;
        }
        case 2: journal().undo(); break;
        case 3: journal().redo(); break;
        case 4: double_click(x(), y()); break;
        default: {
            const int from_y = y();
            drag({x(), from_y}, {x(), anything.up_to(30) ? from_y : 500}, held(), held());
        }
        }
        ASSERT_EQ(m_timeline.drag_mode(), -1);
        made += journal().position() > steps;
        if (m_bar->get_total_length() < 5)
            drag({int(m_timeline.pixel_from_time(m_bar->get_total_length())) + 5, 30}, {400, 30});
    }
    boxes::set_responder(&m_answers);
    EXPECT_GT(made, test::times(80, 800));
    undo_all();
    EXPECT_FALSE(journal().has_dropped());
    EXPECT_EQ(text(), before);
}
