// How a running interface goes over from one look to another, and that it does so only while it runs.

#include "drawing_fixture.h"
#include "gui_core/dxut_combo_box.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "gui_core/open_menu.h"
#include "gui_core/transitions.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class TransitionsTest : public DrawingTest {
protected:
    void SetUp() override
    {
        m_menu = m_core.create_menu();
        m_core.create_menu_item(*m_menu, 0, {.text = u"File"_s});
        m_core.create_menu_item(*m_menu, 1, {.text = u"Edit"_s});
        m_home = dialog({200, 60, 160, 120});
        (void)set(*m_home, "minimize_button", true);
        m_combo = control<CDXUTComboBox>(m_core.GetRootDialog(), DXUT_CONTROL_COMBOBOX, {10, 10, 100, 24});
        (void)set(*m_combo, "items", QStringList{u"One"_s, u"Two"_s});
    }
    void run(double speed = 1)
    {
        (void)set(m_core, "animation_speed", speed);
        m_core.EnableGui(false);
        m_now = 0;
        (void)m_core.advance(0);
    }
    /// Lets seconds pass; whether something was to be drawn anew.
    bool pass(double seconds)
    {
        m_core.take_damage();
        return m_core.advance(m_now += seconds);
    }
    /// The pictures at the beginning, in the middle and at the end of what `begin` sets going, and at rest. A view that
    /// draws only what is marked to be drawn shows the same.
    template <class Begin>
    void expect_way(Begin begin)
    {
        const QImage before = picture();
        m_core.take_damage();
        QImage view = before;
        const auto shown = [&] {
            repaint(view);
            const QImage whole = picture();
            EXPECT_TRUE(differing(view, whole).isEmpty());
            return whole;
        };
        begin();
        const QImage first = shown();
        EXPECT_TRUE(m_core.advance(m_now += 0.001));
        EXPECT_EQ(shown(), first) << "noticed a moment later";
        EXPECT_TRUE(m_core.advance(m_now += 0.07));
        const QImage middle = shown();
        EXPECT_NE(middle, first);
        EXPECT_TRUE(m_core.advance(m_now += 0.2));
        const QImage last = shown();
        EXPECT_NE(last, middle);
        EXPECT_NE(last, before);
        EXPECT_FALSE(m_core.advance(m_now += 0.2)) << "at rest";
        EXPECT_EQ(shown(), last);
    }

    CDXUTMenu* m_menu = nullptr;
    CDXUTDialog* m_home = nullptr;
    CDXUTComboBox* m_combo = nullptr;
    double m_now = 0;
};

} // namespace

TEST_F(TransitionsTest, menus_and_dropped_lists_come_up_and_dialogs_shrink_and_unroll)
{
    m_core.on_event = nullptr;
    run();
    expect_way([&] { m_core.pop_menu(*m_menu, {40, 40}); });
    m_core.close_menu();
    expect_way([&] { m_combo->key_pressed(Qt::Key_Space, {}); });
    m_combo->close_popup();
    expect_way([&] { m_home->set_minimized(true); });
    expect_way([&] { m_home->set_minimized(false); });
}

TEST_F(TransitionsTest, the_way_of_a_dialog_leads_from_its_old_frame_to_its_new_one)
{
    (void)set(*m_home, "minimize_to_bottom", true);
    run();
    const auto frame = [&] { return m_core.transitions().frame_of(*m_home).value_or(QRectF()); };
    const QRectF open = m_home->outer_rect();
    EXPECT_TRUE(frame().isNull());
    m_home->set_minimized(true);
    EXPECT_EQ(frame(), open) << "before anybody noticed";
    pass(0.01);
    pass(0.075);
    const QRectF bar = m_home->outer_rect();
    EXPECT_NEAR(frame().y(), (open.y() + bar.y()) / 2, 1);
    EXPECT_NEAR(frame().width(), (open.width() + bar.width()) / 2, 1);
    m_core.take_damage();
    (void)m_core.advance(m_now += 0.01);
    EXPECT_TRUE(m_core.take_damage().contains(open.united(bar)));
    m_core.remove_dialog(m_home);
    (void)pass(0.01);
    EXPECT_TRUE(frame().isNull()) << "it is gone";
}

TEST_F(TransitionsTest, at_speed_0_and_without_a_clock_all_is_at_its_end)
{
    const auto looks = [&] {
        std::vector<QImage> pictures;
        m_core.pop_menu(*m_menu, {40, 40});
        pictures.push_back(picture());
        m_core.close_menu();
        m_combo->key_pressed(Qt::Key_Space, {});
        pictures.push_back(picture());
        m_combo->close_popup();
        m_home->set_minimized(true);
        pictures.push_back(picture());
        m_home->set_minimized(false);
        pictures.push_back(picture());
        return pictures;
    };
    m_core.EnableGui(false);
    const auto still = looks();
    run(0);
    EXPECT_EQ(looks(), still);
    EXPECT_FALSE(pass(0.01));
    run(1);
    EXPECT_NE(looks(), still);
    m_core.EnableGui(true);
    m_core.EnableGui(false);
    EXPECT_EQ(looks(), still) << "the clock begins anew with each preview";
}

TEST_F(TransitionsTest, twice_the_speed_takes_half_the_time)
{
    const auto seconds = [&](double speed) {
        run(speed);
        m_core.pop_menu(*m_menu, {40, 40});
        int frames = 0;
        while (pass(0.005))
            ++frames;
        m_core.close_menu();
        return frames;
    };
    EXPECT_NEAR(seconds(1), 2 * seconds(2), 2);
    EXPECT_NEAR(seconds(0.5), 2 * seconds(1), 2);
}
