#include "mouse_fixture.h"
#include "support/attributes.h"

#include "tools/hit_test.h"
#include "tools/selection_edit.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class SelectingTest : public MouseToolsTest {
protected:
    SelectingTest() : d(home()), low(button(d, {20, 20, 100, 60})), high(button(d, {60, 40, 100, 60})) {}

    /// A place of the screen over a place of the dialog's client area.
    QPointF at(double x, double y) const { return d->client_rect().topLeft() + QPointF(x, y); }

    CDXUTDialog* d;
    CDXUTControl* low;
    CDXUTControl* high;
};

using Controls = std::vector<CDXUTControl*>;

} // namespace

TEST_F(SelectingTest, ctrl_toggles_and_shift_adds_while_a_plain_click_leaves_one)
{
    click(at(30, 30));
    EXPECT_EQ(selected(), Controls{low});
    EXPECT_EQ(core().selection().current_dialog, d) << "the control's dialog is the current one";
    EXPECT_TRUE(core().selection().controls_selected);
    click(at(150, 90), Qt::ShiftModifier);
    EXPECT_EQ(selected(), (Controls{low, high}));
    click(at(150, 90), Qt::ShiftModifier);
    EXPECT_EQ(selected(), (Controls{low, high})) << "Shift takes nothing away";
    click(at(30, 30), Qt::ControlModifier);
    EXPECT_EQ(selected(), Controls{high});
    click(at(150, 90), Qt::ControlModifier);
    EXPECT_TRUE(selected().empty());
    EXPECT_EQ(core().selection().current_control, nullptr);
    core().SelectControl(low, false);
    core().SelectControl(high, true);
    click(at(30, 30));
    EXPECT_EQ(selected(), Controls{low});
    EXPECT_FALSE(m_scene.journal().can_undo());
}

TEST_F(SelectingTest, another_click_in_the_same_place_reaches_what_lies_beneath)
{
    const QPointF both = at(80, 60);
    click(both);
    EXPECT_EQ(selected(), Controls{high});
    click(both + QPointF(1, 1));
    EXPECT_EQ(selected(), Controls{low});
    drag(both, both + QPointF(7, 0));
    EXPECT_EQ(low->rect().topLeft(), QPointF(27, 20)) << "a drag moves what was reached";
    EXPECT_EQ(high->rect().topLeft(), QPointF(60, 40));
    click(both);
    EXPECT_EQ(selected(), Controls{high}) << "after a drag a click begins from the top";
    click(both);
    click(both);
    EXPECT_EQ(core().selection().dialogs, std::vector{d});
    EXPECT_TRUE(selected().empty());
    click(both);
    EXPECT_EQ(selected(), Controls{high}) << "round again";
    click(at(150, 90));
    EXPECT_EQ(selected(), Controls{high}) << "a first click elsewhere stays on top";
}

TEST_F(SelectingTest, what_is_locked_or_hidden_is_not_reached)
{
    high->set_locked(true);
    click(at(80, 60));
    EXPECT_EQ(selected(), Controls{low});
    low->SetVisible(false);
    click(at(30, 30));
    EXPECT_EQ(core().selection().dialogs, std::vector{d});
    drag({50, 50}, {600, 500});
    EXPECT_TRUE(selected().empty()) << "nor by a marquee";
}

TEST_F(SelectingTest, a_marquee_from_nothing_catches_what_it_touches)
{
    CDXUTDialog* other = dialog({520, 100, 200, 100});
    CDXUTControl* far = button(other, {10, 10, 20, 20});
    drag({90, 90}, at(61, 41));
    EXPECT_EQ(selected(), (Controls{low, high}));
    EXPECT_EQ(core().selection().current_control, high);
    drag({700, 400}, {535, 130}, true, Qt::ControlModifier);
    EXPECT_EQ(selected(), (Controls{low, high, far})) << "controls of several dialogs";
    drag({90, 90}, at(30, 30), true, Qt::ControlModifier);
    EXPECT_EQ(selected(), (Controls{high, far})) << "Ctrl changes what is caught";
    drag({90, 90}, at(30, 30), true, Qt::ShiftModifier);
    EXPECT_EQ(selected(), (Controls{high, far, low}));
    drag({90, 500}, {95, 600});
    EXPECT_TRUE(selected().empty()) << "an empty one clears";
    EXPECT_FALSE(m_scene.journal().can_undo());
}

TEST_F(SelectingTest, shift_draws_the_marquee_inside_a_dialog_which_else_is_moved)
{
    CDXUTDialog* below = dialog({100, 100, 400, 300});
    core().AdjustDialogLayer(below, 1);
    button(below, {20, 20, 50, 50});
    drag(at(300, 250), at(10, 10), true, Qt::ShiftModifier);
    EXPECT_EQ(selected(), (Controls{low, high})) << "only controls of the dialog in which it began";
    EXPECT_EQ(d->rect().topLeft(), QPoint(100, 100));
    drag(at(300, 250), at(310, 250));
    EXPECT_EQ(d->rect().topLeft(), QPoint(110, 100));
}

TEST_F(SelectingTest, escape_drops_a_marquee_and_then_selects_less)
{
    core().SelectControl(low, false);
    drag({90, 90}, at(100, 100), false);
    EXPECT_TRUE(escape());
    mouse(Kind::Release, at(100, 100));
    EXPECT_EQ(selected(), Controls{low});
    EXPECT_TRUE(escape());
    EXPECT_EQ(core().selection().dialogs, std::vector{d}) << "from the control to its dialog";
    EXPECT_TRUE(escape());
    EXPECT_TRUE(core().selection().dialogs.empty());
    EXPECT_FALSE(escape());
}

TEST_F(SelectingTest, what_goes_during_a_marquee_is_not_caught)
{
    drag({90, 90}, at(100, 100), false);
    m_scene.RemoveCtrl(low);
    mouse(Kind::Release, at(100, 100));
    EXPECT_EQ(selected(), Controls{high});
}

TEST(Marquee, catches_by_touching_or_enclosing)
{
    const QRectF marquee(0, 0, 100, 100);
    EXPECT_TRUE(is_caught({90, 90, 50, 50}, marquee, MarqueeMode::Touched));
    EXPECT_FALSE(is_caught({90, 90, 50, 50}, marquee, MarqueeMode::Enclosed));
    EXPECT_TRUE(is_caught({10, 10, 50, 50}, marquee, MarqueeMode::Enclosed));
    EXPECT_FALSE(is_caught({110, 10, 50, 50}, marquee, MarqueeMode::Touched));
}

TEST_F(SelectingTest, a_rotated_control_is_hit_where_it_is_drawn_and_has_no_handles)
{
    high->SetVisible(false);
    (void)set(*low, "rotation", 90.0); // About its middle (70, 50): it now stands from (40, 0) to (100, 100).
    click(at(25, 50));
    EXPECT_TRUE(selected().empty()) << "where it lay";
    click(at(70, 95));
    EXPECT_EQ(selected(), Controls{low}) << "where it stands";
    const QRectF before = low->rect();
    drag(at(120, 50), at(140, 50)); // A handle of the upright frame would be there.
    EXPECT_EQ(low->rect(), before);
    clear_selection(m_scene);
    drag(at(35, 90), at(50, 98), true, Qt::ShiftModifier); // A frame over the end that sticks out.
    EXPECT_EQ(selected(), Controls{low});
}
