#include "gui_core/gui_input.h"

#include "gui_core/dxut_combo_box.h"
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
    QPointF centre(const CDXUTControl* c) const { return c->screen_rect().center(); }

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
    EXPECT_FALSE(m_input.wheel_turned({310, 230}, 1));
    EXPECT_FALSE(m_input.key_pressed(Qt::Key_Escape, {}));
    EXPECT_EQ(m_core.live().popup, nullptr);
}

TEST_F(GuiInputTest, disabled_and_hidden_controls_take_no_click)
{
    m_box->SetEnabled(false);
    click(centre(m_box));
    EXPECT_FALSE(m_box->GetChecked());
    EXPECT_EQ(m_box->visual_state(), VisualState::Disabled);
    m_box->SetEnabled(true);
    m_box->SetVisible(false);
    click(centre(m_box));
    EXPECT_FALSE(m_box->GetChecked());
    m_box->SetVisible(true);
    m_home->SetVisible(false);
    EXPECT_FALSE(m_input.mouse_pressed(centre(m_box)));
    EXPECT_FALSE(m_box->GetChecked());
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
    disabled->SetEnabled(false);
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
    m_box->SetEnabled(false);
    m_input.key_pressed(Qt::Key_Space, Qt::NoModifier);
    EXPECT_TRUE(m_box->GetChecked());
}

TEST_F(GuiInputTest, a_rotated_control_is_hit_where_it_is_seen)
{
    m_box->set_rotation(90); // About its middle: what was 120 wide and 24 high stands upright.
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
    slider->set_rotation(-90); // It runs from the bottom to the top.
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
    combo->set_rotation(90);
    click(centre(combo) + QPointF(0, 50));
    ASSERT_TRUE(combo->is_dropped());
    EXPECT_GE(combo->popup_rect().top(), combo->bounds().bottom());
    EXPECT_EQ(combo->popup_rect().center().x(), combo->bounds().center().x());
    click(m_home->to_screen(combo->popup_rect()).center());
    EXPECT_EQ(combo->GetSelectedIndex(), 1);
}
