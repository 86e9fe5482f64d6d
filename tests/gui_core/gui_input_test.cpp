#include "gui_core/gui_input.h"

#include "gui_core/dxut_button_st.h"
#include "gui_core/dxut_combo_box.h"
#include "gui_core/dxut_list_box.h"
#include "gui_core/dxut_radio_button.h"
#include "gui_core/dxut_slider.h"
#include "support/gui_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class GuiInputTest : public GuiTest {
protected:
    GuiInputTest() { m_core.EnableGui(false); }
    void click(QPointF place)
    {
        m_input.mouse_pressed(place);
        m_input.mouse_released(place);
    }
    CDXUTComboBox* combo_box(const QRectF& rect, int entries)
    {
        auto* made = control<CDXUTComboBox>(m_home, DXUT_CONTROL_COMBOBOX, rect);
        for (int i = 0; i < entries; ++i)
            made->AddItem(QString::number(i));
        return made;
    }
    std::vector<GuiEventType> events_of(CDXUTControl* control)
    {
        std::vector<GuiEventType> types;
        for (const auto& [heard, type] : m_heard)
            if (heard == control)
                types.push_back(type);
        return types;
    }
    void listen()
    {
        m_core.on_event = [this](const GuiEvent& event) { m_heard.push_back({event.control, event.type}); };
    }
    QPointF centre(const CDXUTControl* c) const { return c->screen_rect().center(); }

    std::vector<std::pair<CDXUTControl*, GuiEventType>> m_heard;
    GuiInput m_input{m_core};
    CDXUTDialog* m_home = dialog({100, 100, 300, 200});
    CDXUTCheckBox* m_box = check_box(m_home, {20, 20, 120, 24});
};

} // namespace

TEST_F(GuiInputTest, a_check_box_shows_what_the_mouse_does_and_changes_on_release)
{
    EXPECT_EQ(m_box->visual_state(), VisualState::Normal);
    EXPECT_TRUE(m_input.mouse_moved(centre(m_box)));
    EXPECT_EQ(m_box->visual_state(), VisualState::Hover);
    m_input.mouse_pressed(centre(m_box));
    EXPECT_EQ(m_box->visual_state(), VisualState::Pressed);
    EXPECT_FALSE(m_box->GetChecked());
    m_input.mouse_released(centre(m_box));
    EXPECT_TRUE(m_box->GetChecked());
    EXPECT_EQ(m_box->visual_state(), VisualState::Hover);
    EXPECT_FALSE(m_input.mouse_moved({5, 5})) << "nothing is there";
    EXPECT_EQ(m_box->visual_state(), VisualState::Focused);
}

TEST_F(GuiInputTest, a_press_that_is_released_elsewhere_is_no_click)
{
    CDXUTCheckBox* other = check_box(m_home, {20, 80, 120, 24});
    m_input.mouse_pressed(centre(m_box));
    m_input.mouse_moved(centre(other));
    EXPECT_EQ(m_box->visual_state(), VisualState::Normal);
    m_input.mouse_released(centre(other));
    EXPECT_FALSE(m_box->GetChecked() || other->GetChecked());
}

TEST_F(GuiInputTest, a_control_that_is_removed_gives_up_mouse_and_keyboard)
{
    m_input.mouse_pressed(centre(m_box));
    m_core.remove_control(m_box);
    m_input.mouse_moved({210, 140});
    m_input.mouse_released({210, 140});
    EXPECT_FALSE(m_input.key_pressed(Qt::Key_Space, {}));

    auto* combo = control<CDXUTComboBox>(m_home, DXUT_CONTROL_COMBOBOX, {100, 60, 120, 24});
    combo->AddItem(u"one"_s);
    click(centre(combo));
    ASSERT_TRUE(combo->is_dropped());
    m_core.remove_controls({combo});
    EXPECT_FALSE(m_input.wheel_turned({1000, 600}, 1)) << "no list has it";
    EXPECT_FALSE(m_input.key_pressed(Qt::Key_Escape, {}));
    EXPECT_EQ(m_core.live().popup, nullptr);
}

TEST_F(GuiInputTest, disabled_and_hidden_controls_take_no_click)
{
    (void)set(*m_box, "enabled", false);
    click(centre(m_box));
    EXPECT_FALSE(m_box->GetChecked());
    EXPECT_EQ(m_box->visual_state(), VisualState::Disabled);
    (void)set(*m_box, "enabled", true);
    m_box->SetVisible(false);
    click(centre(m_box));
    EXPECT_FALSE(m_box->GetChecked());
    m_box->SetVisible(true);
    m_home->SetVisible(false);
    EXPECT_FALSE(m_input.mouse_pressed(centre(m_box)));
    EXPECT_FALSE(m_box->GetChecked());
}

TEST_F(GuiInputTest, what_is_faded_out_takes_no_click_and_lets_it_through)
{
    (void)set(*m_box, "transparency", 1.0);
    click(centre(m_box));
    EXPECT_FALSE(m_box->GetChecked());
    EXPECT_FALSE(m_box->can_be_reached());
    (void)set(*m_box, "transparency", 0.99);
    click(centre(m_box));
    EXPECT_TRUE(m_box->GetChecked()) << "what is still seen does";
    (void)set(*m_home, "transparency", 1.0);
    EXPECT_FALSE(m_input.mouse_pressed(centre(m_box)));
    EXPECT_FALSE(m_box->can_be_reached());
    EXPECT_NE(m_core.active_dialog(), m_home);
}

TEST_F(GuiInputTest, the_topmost_control_wins_and_a_dialog_hides_what_is_below)
{
    CDXUTCheckBox* above = check_box(m_home, m_box->rect());
    click(centre(above));
    EXPECT_TRUE(above->GetChecked() && !m_box->GetChecked());
    CDXUTDialog* cover = dialog(QRect(90, 90, 200, 200));
    click(centre(above));
    EXPECT_TRUE(above->GetChecked()) << "covered";
    EXPECT_EQ(GuiInput::dialog_at(m_core, centre(above)), cover);
    m_core.AdjustDialogLayer(cover, 1);
    click(centre(above));
    EXPECT_FALSE(above->GetChecked());
    ASSERT_TRUE(set(*cover, "always_on_top", true).ok());
    EXPECT_EQ(GuiInput::control_at(m_core, centre(above)), nullptr);
}

TEST_F(GuiInputTest, the_root_dialog_lies_below_all_and_is_hit_only_on_its_controls)
{
    CDXUTCheckBox* on_root = check_box(m_core.GetRootDialog(), {100, 100, 400, 300});
    EXPECT_EQ(GuiInput::control_at(m_core, {450, 350}), on_root);
    EXPECT_EQ(GuiInput::dialog_at(m_core, {450, 350}), m_core.GetRootDialog());
    EXPECT_EQ(GuiInput::control_at(m_core, m_home->client_rect().bottomRight() - QPointF(9, 9)), nullptr);
    EXPECT_EQ(GuiInput::dialog_at(m_core, {1000, 600}), nullptr);
}

TEST_F(GuiInputTest, a_dialog_is_moved_by_its_caption_only_when_it_may)
{
    const QPointF grip(150, 110);
    m_input.mouse_pressed(grip);
    m_input.mouse_moved({250, 160});
    EXPECT_TRUE(m_input.mouse_released({250, 160}));
    EXPECT_EQ(m_home->rect(), QRect(200, 150, 300, 200));
    m_input.mouse_moved({500, 500});
    EXPECT_EQ(m_home->rect().topLeft(), QPoint(200, 150)) << "the drag has ended";
    ASSERT_TRUE(set(*m_home, "movable", false).ok());
    m_input.mouse_pressed({250, 160});
    m_input.mouse_moved({300, 300});
    m_input.mouse_released({300, 300});
    EXPECT_EQ(m_home->rect().topLeft(), QPoint(200, 150));
}

TEST_F(GuiInputTest, the_buttons_of_the_caption_minimise_restore_and_close)
{
    using Button = CDXUTDialog::CaptionButton;
    EXPECT_TRUE(m_home->caption_button_rect(Button::Minimize).isEmpty());
    ASSERT_TRUE(set(*m_home, "minimize_button", true).ok());
    EXPECT_FALSE(m_home->caption_button_rect(Button::Minimize).intersects(m_home->caption_button_rect(Button::Close)));
    click(m_home->caption_button_rect(Button::Minimize).center());
    EXPECT_TRUE(m_home->minimized());
    EXPECT_EQ(m_home->outer_rect(), m_home->caption_rect());
    EXPECT_EQ(GuiInput::control_at(m_core, {180, 156}), nullptr) << "its controls are away";
    ASSERT_TRUE(set(*m_home, "minimize_to_bottom", true).ok());
    EXPECT_EQ(m_home->caption_rect().bottom(), 720);
    click(m_home->caption_button_rect(Button::Minimize).center());
    EXPECT_FALSE(m_home->minimized());
    click(m_home->caption_button_rect(Button::Close).center());
    EXPECT_FALSE(m_home->GetVisible());
}

TEST_F(GuiInputTest, the_keyboard_goes_round_the_controls_that_can_be_reached)
{
    CDXUTCheckBox* disabled = check_box(m_home, {20, 50, 120, 24});
    (void)set(*disabled, "enabled", false);
    m_core.create_control(DXUT_CONTROL_STATIC, m_home, {20, 70, 50, 20});
    CDXUTCheckBox* last = check_box(m_home, {20, 90, 120, 24});
    CDXUTDialog* closed = dialog({500, 100, 200, 100});
    check_box(closed, {0, 0, 50, 20});
    closed->SetVisible(false);
    EXPECT_FALSE(m_input.key_pressed(Qt::Key_Space, Qt::NoModifier)) << "nothing has the focus yet";
    std::vector<CDXUTControl*> visited;
    for (const auto key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Backtab}) {
        m_input.key_pressed(key, Qt::NoModifier);
        visited.push_back(m_core.live().focused);
    }
    EXPECT_EQ(visited, (std::vector<CDXUTControl*>{m_box, last, m_box, last}));
    m_input.key_pressed(Qt::Key_Space, Qt::NoModifier);
    EXPECT_TRUE(last->GetChecked());
}

TEST_F(GuiInputTest, a_focused_control_that_can_no_longer_be_reached_does_not_hear_the_keyboard)
{
    click(centre(m_box));
    ASSERT_EQ(m_core.live().focused, m_box);
    m_home->SetVisible(false);
    m_input.key_pressed(Qt::Key_Space, Qt::NoModifier);
    m_home->SetVisible(true);
    (void)set(*m_box, "enabled", false);
    m_input.key_pressed(Qt::Key_Space, Qt::NoModifier);
    EXPECT_TRUE(m_box->GetChecked());
}

TEST_F(GuiInputTest, a_rotated_control_is_hit_where_it_is_seen)
{
    (void)set(*m_box, "rotation", 90.0); // About its middle: what was 120 wide and 24 high stands upright.
    const QPointF middle = centre(m_box);
    EXPECT_EQ(GuiInput::control_at(m_core, middle + QPointF(0, 55)), m_box);
    EXPECT_EQ(GuiInput::control_at(m_core, middle + QPointF(0, 65)), nullptr);
    EXPECT_EQ(GuiInput::control_at(m_core, middle + QPointF(55, 0)), nullptr);
    click(middle + QPointF(10, 55));
    EXPECT_TRUE(m_box->GetChecked());
    ASSERT_TRUE(set(*m_home, "align_type", qint64(9)).ok());
    m_core.set_screen_size({2560, 720}); // Twice as wide: the turned control is squeezed with its dialog.
    EXPECT_EQ(GuiInput::control_at(m_core, centre(m_box) + QPointF(23, 55)), m_box);
    EXPECT_EQ(GuiInput::control_at(m_core, centre(m_box) + QPointF(25, 0)), nullptr);
}

TEST_F(GuiInputTest, dragging_in_a_rotated_control_goes_along_the_control)
{
    auto* slider = control<CDXUTSlider>(m_home, DXUT_CONTROL_SLIDER, {50, 100, 200, 20});
    (void)set(*slider, "rotation", -90.0); // It runs from the bottom to the top.
    const QPointF middle = centre(slider);
    m_input.mouse_pressed(middle + QPointF(5, 40));
    EXPECT_LT(slider->value(), 40);
    m_input.mouse_moved(middle - QPointF(5, 40));
    EXPECT_GT(slider->value(), 60);
    m_input.mouse_moved(middle - QPointF(-70, 300)); // Sideways counts for nothing.
    EXPECT_EQ(slider->value(), 100);
}

TEST_F(GuiInputTest, a_rotated_combo_box_drops_an_upright_list_below_where_it_is_seen)
{
    auto* combo = control<CDXUTComboBox>(m_home, DXUT_CONTROL_COMBOBOX, {100, 60, 120, 24});
    for (const auto* text : {u"a", u"b", u"c"})
        combo->AddItem(QString::fromUtf16(text));
    (void)set(*combo, "rotation", 90.0);
    click(centre(combo) + QPointF(0, 50));
    ASSERT_TRUE(combo->is_dropped());
    EXPECT_GE(combo->popup_rect().top(), combo->bounds().bottom());
    EXPECT_EQ(combo->popup_rect().center().x(), combo->bounds().center().x());
    click(m_home->to_screen(combo->popup_rect()).center());
    EXPECT_EQ(combo->GetSelectedIndex(), 1);
}

TEST_F(GuiInputTest, what_lies_below_an_open_list_hears_nothing_and_the_list_has_the_mouse)
{
    CDXUTComboBox* combo = combo_box({20, 60, 120, 24}, 20);
    CDXUTButton* below = button(m_home, {20, 84, 120, 100});
    listen();
    click(centre(combo));
    ASSERT_TRUE(combo->is_dropped());
    const QRectF list = m_home->to_screen(combo->popup_rect());
    m_input.mouse_moved(list.topLeft() + QPointF(10, 30));
    EXPECT_EQ(combo->hot_row(), 1);
    EXPECT_TRUE(m_input.wheel_turned(list.center(), -3));
    EXPECT_EQ(combo->hot_row(), 4) << "the rows moved under the mouse";
    EXPECT_TRUE(m_input.covers(list.bottomLeft() + QPointF(5, -5)));

    const QPointF bar = list.topRight() + QPointF(-4, 4);
    m_input.mouse_pressed(bar);
    m_input.mouse_moved(bar + QPointF(60, 400)); // beside it, as a hand drags
    m_input.mouse_released(bar + QPointF(60, 400));
    EXPECT_TRUE(combo->is_dropped());
    EXPECT_EQ(combo->first_row(), 12);
    EXPECT_EQ(combo->GetSelectedIndex(), -1) << "scrolling chooses nothing";
    click(list.topLeft() + QPointF(10, 30));
    EXPECT_EQ(combo->GetSelectedIndex(), 13);
    EXPECT_FALSE(combo->is_dropped());
    EXPECT_EQ(events_of(combo), std::vector{EVENT_COMBOBOX_SELECTION_CHANGED});
    EXPECT_EQ(events_of(below), std::vector{EVENT_BUTTON_MOUSE_ENTERED}) << "only once the list was gone";
}

TEST_F(GuiInputTest, a_list_is_used_in_one_press_too_and_closes_with_what_it_belongs_to)
{
    CDXUTComboBox* combo = combo_box({20, 60, 120, 24}, 3);
    m_input.mouse_pressed(centre(combo));
    const QPointF second = m_home->to_screen(combo->popup_rect()).center();
    m_input.mouse_moved(second);
    m_input.mouse_released(second);
    EXPECT_EQ(combo->GetSelectedIndex(), 1);

    click(centre(combo));
    m_home->SetVisible(false);
    EXPECT_TRUE(combo->raised_area().isEmpty());
    m_home->SetVisible(true);
    click(centre(combo));
    m_input.key_pressed(Qt::Key_Tab, {});
    EXPECT_FALSE(combo->is_dropped()) << "the keyboard went elsewhere";
}

TEST_F(GuiInputTest, an_empty_combo_box_swallows_no_click)
{
    CDXUTComboBox* combo = combo_box({20, 60, 120, 24}, 0);
    click(centre(combo));
    click(centre(m_box));
    EXPECT_TRUE(m_box->GetChecked());
    combo->AddItem(u"one"_s);
    click(centre(combo));
    combo->RemoveItem(0); // as a script may, while the list is down
    click(centre(m_box));
    EXPECT_FALSE(m_box->GetChecked());
}

TEST_F(GuiInputTest, a_dialog_keeps_wheel_and_camera_from_the_world_behind_it)
{
    control<CDXUTPicture>(m_core.GetRootDialog(), DXUT_CONTROL_PICTURE, {0, 0, 1280, 720});
    CDXUTButton* on_root = button(m_core.GetRootDialog(), {900, 500, 80, 30});
    const QPointF empty_part = m_home->client_rect().bottomRight() - QPointF(5, 5);
    EXPECT_TRUE(m_input.wheel_turned(empty_part, 1) && m_input.covers(empty_part));
    EXPECT_TRUE(m_input.covers(m_home->caption_rect().center()));
    EXPECT_TRUE(m_input.covers(centre(on_root)));
    EXPECT_FALSE(m_input.covers({700, 600}) || m_input.wheel_turned({700, 600}, 1)) << "a picture behind all";
    m_home->SetVisible(false);
    EXPECT_FALSE(m_input.covers(empty_part));
}

TEST_F(GuiInputTest, a_click_raises_a_dialog_within_its_layer_and_makes_it_active)
{
    CDXUTDialog* other = dialog({300, 150, 300, 200});
    CDXUTDialog* pinned = dialog({320, 160, 100, 60});
    ASSERT_TRUE(set(*pinned, "always_on_top", true).ok());
    EXPECT_EQ(m_core.active_dialog(), pinned) << "the topmost, while none was clicked";
    click(centre(m_box));
    EXPECT_EQ(m_core.active_dialog(), m_home);
    EXPECT_EQ(GuiInput::dialog_at(m_core, {380, 300}), m_home) << "it lies above the other one";
    EXPECT_EQ(GuiInput::dialog_at(m_core, {350, 200}), pinned);
    click({500, 300});
    EXPECT_EQ(m_core.active_dialog(), other);
    EXPECT_EQ(GuiInput::dialog_at(m_core, {380, 300}), other);
    EXPECT_EQ(m_core.live().focused, nullptr) << "the keyboard left the other dialog";
    other->SetVisible(false);
    EXPECT_EQ(m_core.active_dialog(), pinned);
    m_core.remove_dialog(pinned);
    EXPECT_EQ(m_core.active_dialog(), m_home);
}

TEST_F(GuiInputTest, a_dialog_that_is_dragged_away_can_be_taken_again)
{
    const QRectF screen(QPointF(), QSizeF(m_core.screen_size()));
    const QPointF grip(150, 110);
    for (const QPointF to : {QPointF(-900, -900), QPointF(3000, 3000), QPointF(-900, 3000)}) {
        m_input.mouse_pressed(m_home->caption_rect().intersected(screen).center());
        m_input.mouse_moved(to);
        m_input.mouse_released(to);
        const QRectF seen = m_home->caption_rect().intersected(screen);
        EXPECT_GE(seen.width(), 40);
        EXPECT_EQ(seen.height(), 24);
    }
}

TEST_F(GuiInputTest, dialogs_at_the_bottom_stand_side_by_side_and_close_up)
{
    std::vector<CDXUTDialog*> all{m_home};
    for (int i = 0; i < 7; ++i)
        all.push_back(dialog({100, 100, 300, 200}));
    for (CDXUTDialog* each : all) {
        (void)set(*each, "minimize_to_bottom", true);
        each->set_minimized(true);
    }
    const QRectF screen(QPointF(), QSizeF(m_core.screen_size()));
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_TRUE(screen.contains(all[i]->outer_rect()));
        EXPECT_EQ(all[i]->outer_rect(), all[i]->drawn_bounds());
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_FALSE(all[i]->outer_rect().intersects(all[j]->outer_rect())) << i << j;
    }
    EXPECT_EQ(all[0]->outer_rect().bottomLeft(), QPointF(0, 720));
    EXPECT_EQ(all[7]->outer_rect().bottom(), 720 - 24) << "there is no more room beside the others";
    m_core.take_damage();
    all[0]->set_minimized(false);
    EXPECT_EQ(all[1]->outer_rect().bottomLeft(), QPointF(0, 720));
    m_core.live();
    all[1]->SetVisible(false);
    EXPECT_EQ(all[2]->drawn_bounds().bottomLeft(), QPointF(0, 720));
    m_core.remove_dialog(all[2]);
    m_core.live();
    EXPECT_EQ(all[3]->drawn_bounds().bottomLeft(), QPointF(0, 720));
    EXPECT_TRUE(m_core.take_damage().contains(QRectF(0, 700, 800, 20)));
}

TEST_F(GuiInputTest, a_button_of_the_caption_works_on_release_and_can_be_left)
{
    const QPointF cross = m_home->caption_button_rect(CDXUTDialog::CaptionButton::Close).center();
    m_input.mouse_pressed(cross);
    EXPECT_TRUE(m_home->GetVisible());
    m_input.mouse_moved(centre(m_box));
    EXPECT_EQ(m_core.live().hovered, nullptr) << "the mouse is the button's";
    m_input.mouse_released(centre(m_box));
    EXPECT_TRUE(m_home->GetVisible());
    m_input.mouse_pressed(centre(m_box));
    m_input.mouse_released(cross);
    EXPECT_TRUE(m_home->GetVisible()) << "the press was elsewhere";
    click(cross);
    EXPECT_FALSE(m_home->GetVisible());
}

TEST_F(GuiInputTest, tab_stays_in_the_dialog_and_goes_as_one_reads_or_as_the_author_numbered)
{
    CDXUTDialog* other = dialog({500, 100, 300, 200});
    CDXUTCheckBox* elsewhere = check_box(other, {20, 20, 100, 24});
    CDXUTCheckBox* bottom = check_box(m_home, {20, 90, 120, 24});
    CDXUTCheckBox* right = check_box(m_home, {160, 16, 120, 24}); // a little higher than its row's first
    CDXUTCheckBox* middle = check_box(m_home, {20, 50, 120, 24});
    const auto round = [&](int steps) {
        std::vector<CDXUTControl*> visited;
        for (int i = 0; i < steps; ++i) {
            m_input.key_pressed(Qt::Key_Tab, Qt::NoModifier);
            visited.push_back(m_core.live().focused);
        }
        return visited;
    };
    click(centre(m_box));
    EXPECT_EQ(round(4), (std::vector<CDXUTControl*>{right, middle, bottom, m_box}));
    ASSERT_TRUE(set(*bottom, "tab_order", qint64(1)).ok() && set(*right, "tab_order", qint64(2)).ok());
    EXPECT_EQ(round(4), (std::vector<CDXUTControl*>{middle, bottom, right, m_box}));
    click(centre(elsewhere));
    EXPECT_EQ(round(2), (std::vector<CDXUTControl*>{elsewhere, elsewhere}));
    other->SetVisible(false);
    EXPECT_EQ(round(1), (std::vector<CDXUTControl*>{bottom}));
}

TEST_F(GuiInputTest, what_is_dragged_looks_pressed_beside_the_mouse_and_others_do_not_light_up)
{
    auto* slider = control<CDXUTSlider>(m_home, DXUT_CONTROL_SLIDER, {50, 100, 20, 90});
    m_input.mouse_pressed(slider->screen_rect().center() + QPointF(0, 100 - 100));
    m_input.mouse_moved(centre(m_box));
    EXPECT_EQ(slider->visual_state(), VisualState::Pressed);
    EXPECT_EQ(m_box->visual_state(), VisualState::Normal);
    EXPECT_EQ(slider->value(), 100) << "it stands, and the mouse is above it";
    m_input.mouse_moved(centre(slider) + QPointF(40, 400));
    EXPECT_EQ(slider->value(), 0);
    m_input.mouse_released(centre(m_box));
    EXPECT_EQ(slider->visual_state(), VisualState::Focused);
    EXPECT_EQ(m_box->visual_state(), VisualState::Hover);
}

TEST_F(GuiInputTest, arrows_go_on_in_the_group_of_a_radio_button)
{
    std::vector<CDXUTRadioButton*> all;
    for (int i = 0; i < 4; ++i)
        all.push_back(control<CDXUTRadioButton>(m_home, DXUT_CONTROL_RADIOBUTTON, {20, 50.0 + 30 * i, 120, 24}));
    ASSERT_TRUE(set(*all[1], "group", qint64(7)).ok());
    (void)set(*all[2], "enabled", false);
    listen();
    click(centre(all[0]));
    m_input.key_pressed(Qt::Key_Down, Qt::NoModifier);
    EXPECT_TRUE(all[3]->GetChecked() && !all[0]->GetChecked());
    EXPECT_EQ(m_core.live().focused, all[3]);
    EXPECT_EQ(events_of(all[3]), (std::vector{EVENT_RADIOBUTTON_CLICKED, EVENT_RADIOBUTTON_CHECKED}));
    m_input.key_pressed(Qt::Key_Right, Qt::NoModifier);
    EXPECT_TRUE(all[0]->GetChecked());
    m_input.key_pressed(Qt::Key_Up, Qt::NoModifier);
    EXPECT_TRUE(all[3]->GetChecked());
    EXPECT_FALSE(all[1]->GetChecked());
}

TEST_F(GuiInputTest, letters_find_entries_of_list_and_combo_boxes)
{
    auto* list = control<CDXUTListBox>(m_home, DXUT_CONTROL_LISTBOX, {20, 60, 120, 100});
    CDXUTComboBox* combo = combo_box({160, 60, 120, 24}, 0);
    for (CDXUTItems* items : {static_cast<CDXUTItems*>(list), static_cast<CDXUTItems*>(combo)}) {
        for (const auto* text : {u"Alpha", u"beta", u"New York", u"Newcastle", u"北京", u"1", u"11"})
            items->AddItem(QString::fromUtf16(text));
        m_core.set_focused(items);
        const auto type = [&](const QString& text) {
            for (const QChar c : text) {
                m_input.key_pressed(c.unicode(), Qt::NoModifier); // as a view hands both
                m_input.text_typed(c, {});
            }
            return items->GetSelectedIndex();
        };
        EXPECT_EQ(type(u"n"_s), 2);
        EXPECT_EQ(type(u"n"_s), 3) << "the same letter goes on";
        items->reset_run_state(); // as after a pause
        EXPECT_EQ(type(u"new y"_s), 2) << "the blank belongs to the word";
        EXPECT_TRUE(items->popup_rect().isEmpty());
        items->reset_run_state();
        EXPECT_EQ(type(u"11"_s), 6);
        items->reset_run_state();
        EXPECT_EQ(type(u"北"_s), 4);
        EXPECT_EQ(type(u"x"_s), 4) << "nothing begins so";
    }
}
