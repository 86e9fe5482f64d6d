// Rotation, its centre, and scaling with the dialog, as numbers.

#include "core/authored.h"
#include "gui_core/anchor.h"
#include "support/gui_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class ControlShapeTest : public GuiTest {
protected:
    double number(const char* name) { return std::get<double>(get(*m_control, name)); }
    QPointF stored_center() { return {number("center_x"), number("center_y")}; }

    CDXUTDialog* m_home = dialog({0, 0, 400, 200});
    CDXUTControl* m_control = button(m_home, {100, 50, 80, 20});
};

} // namespace

TEST_F(ControlShapeTest, the_centre_is_the_middle_until_it_is_set_and_can_go_back)
{
    EXPECT_EQ(stored_center(), QPointF(40, 10));
    m_control->SetSize(60, 40);
    EXPECT_EQ(stored_center(), QPointF(30, 20));
    ASSERT_TRUE(set(*m_control, "center_x", 30.0).ok()); // Where it is already: now it is the author's.
    m_control->SetSize(100, 100);
    EXPECT_EQ(stored_center(), QPointF(30, 20)) << "setting one keeps both";
    {
        const UserAction action(m_journal);
        EXPECT_TRUE(m_control->reset_center());
        EXPECT_FALSE(m_control->reset_center());
    }
    EXPECT_EQ(stored_center(), QPointF(50, 50));
    EXPECT_TRUE(m_journal.undo());
    EXPECT_TRUE(m_control->has_own_center());
}

TEST_F(ControlShapeTest, bounds_and_outline_follow_the_rotation)
{
    EXPECT_EQ(m_control->bounds(), m_control->rect());
    m_control->set_rotation(90);
    EXPECT_EQ(m_control->bounds(), QRectF(130, 20, 20, 80));
    EXPECT_EQ(m_control->outline().front(), QPointF(150, 20)) << "the corner that was the top left one";
    EXPECT_TRUE(m_control->contains({140, 25}));
    EXPECT_FALSE(m_control->contains({105, 60}));
    EXPECT_EQ(m_control->to_local({150, 20}), QPointF(0, 0));
    m_control->set_center({0, 0});
    EXPECT_EQ(m_control->bounds(), QRectF(80, 50, 20, 80));
    m_control->set_rotation(-1e6f);
    EXPECT_EQ(m_control->rotation(), -7200);
    EXPECT_FALSE(m_control->is_rotated()) << "twenty whole turns";
    EXPECT_EQ(m_control->bounds(), m_control->rect());
    EXPECT_EQ(m_control->screen_bounds(), m_control->screen_rect());
}

TEST_F(ControlShapeTest, a_centre_of_its_own_scales_with_the_control)
{
    m_control->set_center({20, 5});
    EXPECT_TRUE(m_control->set_scale_mode(1));
    m_home->SetSize(800, 600);
    EXPECT_EQ(m_control->rect(), QRectF(200, 150, 160, 60));
    EXPECT_EQ(m_control->center(), QPointF(40, 15));
    m_control->SetLocation(0, 0);
    EXPECT_EQ(m_control->center(), QPointF(40, 15));
    m_home->SetSize(400, 300);
    EXPECT_EQ(m_control->center(), QPointF(20, 7.5));
    m_control->set_center({30, 15});
    EXPECT_EQ(m_control->center(), QPointF(30, 15));
    EXPECT_TRUE(m_control->set_scale_mode(0));
    EXPECT_EQ(m_control->center(), QPointF(30, 15)) << "what is seen stays as it is";
}

TEST_F(ControlShapeTest, scaling_with_the_dialog_remembers_the_anchor_that_it_replaces)
{
    m_control->set_align_type(anchor_bottom_right);
    EXPECT_EQ(get(*m_control, "scale_mode"), Value(qint64(0)));
    ASSERT_TRUE(set(*m_control, "scale_mode", qint64(1)).ok());
    EXPECT_EQ(m_control->align_type(), anchor_scale);
    EXPECT_EQ(get(*m_control, "saved_align_type"), Value(qint64(anchor_bottom_right)));
    EXPECT_FALSE(m_control->set_scale_mode(1));
    ASSERT_TRUE(set(*m_control, "scale_mode", false).ok());
    EXPECT_EQ(m_control->align_type(), anchor_bottom_right);

    m_control->set_align_type(anchor_scale); // Turned on in another way: there is nothing to go back to.
    EXPECT_TRUE(m_control->set_scale_mode(0));
    EXPECT_EQ(m_control->align_type(), anchor_top_left);
}

TEST_F(ControlShapeTest, a_package_gets_no_word_about_what_is_as_usual)
{
    m_control->set_rotation(30);
    m_control->set_center({1, 2});
    m_control->set_align_type(anchor_centre);
    m_control->set_scale_mode(1);
    JsonWriter turned;
    write_state(Authored::state(*m_control), turned);
    EXPECT_EQ(turned.text().find("scale_mode"), std::string::npos) << "the anchor tells it";
    m_control->set_rotation(0);
    m_control->reset_center();
    m_control->set_scale_mode(0);
    JsonWriter usual;
    write_state(Authored::state(*m_control), usual);
    for (const char* name : {"rotation", "center_", "saved_align_type"}) {
        EXPECT_NE(turned.text().find(name), std::string::npos) << name;
        EXPECT_EQ(usual.text().find(name), std::string::npos) << name;
    }
}
