#include "gui_core/anchor.h"

#include "gui_core/gui_input.h"
#include "support/gui_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

struct Case {
    int anchor;
    QPointF grown;  ///< where (10, 20) goes when the area grows by 101 x 51
    QPointF shrunk; ///< and when it shrinks by as much
};

class AnchorTest : public GuiTest {
protected:
    /// Everything that is saved, to see that it stays.
    QByteArray saved() const
    {
        JsonWriter writer;
        for (const auto& states : m_document.snapshot().objects)
            for (const StatePtr& state : states)
                write_state(*state, writer);
        return QByteArray::fromStdString(writer.text());
    }
    static const QSize design, wide, small;
};
const QSize AnchorTest::design{1280, 720};
const QSize AnchorTest::wide{1921, 1081};
const QSize AnchorTest::small{639, 359};

} // namespace

TEST(Anchored, keeps_the_distance_to_the_named_sides)
{
    const Case cases[] = {
        {anchor_top_left, {10, 20}, {10, 20}},        {anchor_top, {60, 20}, {-40, 20}},
        {anchor_top_right, {111, 20}, {-91, 20}},     {anchor_right, {111, 45}, {-91, -5}},
        {anchor_bottom_right, {111, 71}, {-91, -31}}, {anchor_bottom, {60, 71}, {-40, -31}},
        {anchor_bottom_left, {10, 71}, {10, -31}},    {anchor_left, {10, 45}, {10, -5}},
        {anchor_centre, {60, 45}, {-40, -5}},
    };
    const QRectF rect(10, 20, 30, 40);
    const QSizeF area(301, 251);
    for (const Case& c : cases) {
        EXPECT_EQ(anchored(rect, area, area + QSizeF(101, 51), c.anchor), QRectF(c.grown, rect.size())) << c.anchor;
        EXPECT_EQ(anchored(rect, area, area - QSizeF(101, 51), c.anchor), QRectF(c.shrunk, rect.size())) << c.anchor;
        EXPECT_EQ(anchored(rect, area, area, c.anchor), rect) << c.anchor;
        EXPECT_EQ(anchored(rect, {0, 251}, area, c.anchor), rect) << "no base: the present one, " << c.anchor;
    }
    EXPECT_EQ(anchored(rect, {100, 200}, {200, 100}, anchor_scale), QRectF(20, 10, 60, 20));
    EXPECT_EQ(anchored(rect, {0, 0}, {200, 100}, anchor_scale), rect);
}

TEST_F(AnchorTest, another_screen_moves_what_is_anchored_and_changes_nothing_that_is_saved)
{
    std::vector<CDXUTDialog*> dialogs;
    std::vector<QRect> before;
    for (int anchor = 0; anchor <= anchor_scale; ++anchor) {
        dialogs.push_back(dialog({100 + anchor, 60, 301, 201}));
        dialogs.back()->set_align_type(anchor);
        before.push_back(dialogs.back()->rect());
        EXPECT_EQ(before.back(), QRect(100 + anchor, 60, 301, 201)) << "anchoring does not move it";
        button(dialogs.back(), {10, 10, 50, 20})->set_align_type(anchor);
    }
    const QByteArray text = saved();
    for (const QSize& screen : {wide, small, QSize(1, 1), QSize(32767, 32767)}) {
        m_core.set_screen_size(screen);
        for (const CDXUTDialog* d : dialogs)
            EXPECT_EQ(QRectF(d->rect()).toRect(), [&] {
                const QRectF exact = anchored(before[std::size_t(d->align_type())], design, screen, d->align_type());
                return QRect(int(exact.x()), int(exact.y()), int(exact.width()), int(exact.height()));
            }()) << d->align_type();
        EXPECT_EQ(saved(), text);
    }
    m_core.set_screen_size(design);
    for (std::size_t i = 0; i < dialogs.size(); ++i)
        EXPECT_EQ(dialogs[i]->rect(), before[i]);
    EXPECT_EQ(saved(), text);
}

TEST_F(AnchorTest, a_place_set_on_another_screen_is_where_it_was_put_and_anchored_from_there)
{
    for (int anchor = 0; anchor < anchor_scale; ++anchor) {
        for (const QSize& screen : {wide, small}) {
            m_core.set_screen_size(design);
            CDXUTDialog* d = dialog({100, 60, 301, 201});
            d->set_align_type(anchor);
            m_core.set_screen_size(screen);
            EXPECT_TRUE(d->SetLocation(33, 44));
            EXPECT_FALSE(d->SetLocation(33, 44)) << "no change, no step";
            EXPECT_EQ(d->rect(), QRect(33, 44, 301, 201)) << anchor;
            m_core.set_screen_size(design);
            EXPECT_EQ(QRectF(d->rect()), anchored({33, 44, 301, 201}, screen, design, anchor)) << anchor;
            m_core.set_screen_size(screen);
            EXPECT_EQ(d->rect(), QRect(33, 44, 301, 201)) << anchor;
        }
    }
}

TEST_F(AnchorTest, moving_never_changes_the_size_nor_resizing_the_place)
{
    for (int anchor = 0; anchor <= anchor_scale; ++anchor) {
        CDXUTDialog* d = dialog({101, 61, 301, 201});
        d->set_align_type(anchor);
        CDXUTControl* c = button(d, {11, 7, 53, 21});
        c->set_align_type(anchor);
        m_core.set_screen_size(small);
        for (int i = 0; i < 50; ++i)
            d->SetLocation(i, 2 * i);
        c->SetLocation(20, 20);
        m_core.set_screen_size(design);
        EXPECT_EQ(d->rect().size(), QSize(301, 201)) << anchor;
        EXPECT_EQ(c->rect().size(), QSizeF(53, 21)) << anchor;

        d->SetLocation(101, 61);
        m_core.set_screen_size(small);
        ASSERT_TRUE(set(*d, "width", qint64(99)).ok());
        const QPoint place = d->rect().topLeft();
        ASSERT_TRUE(set(*d, "height", qint64(98)).ok());
        EXPECT_EQ(d->rect(), QRect(place, QSize(99, 98))) << anchor;
        m_core.set_screen_size(design);
        EXPECT_EQ(d->rect().topLeft(), QPoint(101, 61)) << anchor;
        m_core.remove_dialog(d);
    }
}

TEST_F(AnchorTest, properties_are_read_and_written_as_on_the_present_screen)
{
    CDXUTDialog* d = dialog({900, 60, 300, 200});
    d->set_align_type(anchor_top_right);
    CDXUTControl* c = button(d, {200, 10, 50, 20});
    c->set_align_type(anchor_top_right);
    m_core.set_screen_size({1680, 720});
    d->SetSize(400, 200);
    EXPECT_EQ(get(*d, "x"), Value(qint64(1300)));
    EXPECT_EQ(get(*c, "x"), Value(300.0));
    ASSERT_TRUE(set(*d, "x", qint64(1000)).ok());
    ASSERT_TRUE(set(*c, "x", 250.0).ok());
    EXPECT_EQ(get(*d, "x"), Value(qint64(1000)));
    EXPECT_EQ(c->rect(), QRectF(250, 10, 50, 20));
    d->SetSize(300, 200);
    EXPECT_EQ(c->rect(), QRectF(150, 10, 50, 20));
    m_core.set_screen_size(design);
    EXPECT_EQ(get(*d, "x"), Value(qint64(600)));
    ASSERT_TRUE(set(*d, "align_type", qint64(99)).ok());
    EXPECT_EQ(d->align_type(), anchor_scale);
    EXPECT_FALSE(set(*d, "x", u"5"_s).ok());
}

TEST_F(AnchorTest, changing_the_anchor_leaves_dialogs_and_controls_where_they_are)
{
    m_core.set_screen_size(wide);
    CDXUTDialog* d = dialog({100, 60, 301, 201});
    CDXUTControl* c = button(m_core.GetRootDialog(), {200, 100, 51, 21});
    for (int from = 0; from <= anchor_scale; ++from) {
        for (int to = 0; to <= anchor_scale; ++to) {
            m_core.set_screen_size(wide);
            d->set_align_type(from);
            c->set_align_type(from);
            m_core.set_screen_size({1500, 801});
            const QRect place = d->rect();
            const QRectF control_place = c->rect();
            EXPECT_EQ(d->set_align_type(to), from != to);
            c->set_align_type(to);
            EXPECT_EQ(d->rect(), place) << from << " to " << to;
            EXPECT_LT((c->rect().topLeft() - control_place.topLeft()).manhattanLength(), 0.01) << from << " to " << to;
        }
    }
}

TEST_F(AnchorTest, a_dialog_that_scales_takes_its_content_along)
{
    CDXUTDialog* d = dialog({100, 50, 300, 200});
    CDXUTControl* c = button(d, {30, 40, 60, 20});
    d->set_align_type(anchor_scale);
    m_core.set_screen_size({2560, 1440});
    EXPECT_EQ(d->rect(), QRect(200, 100, 600, 400));
    EXPECT_EQ(d->caption_rect().height(), 48);
    EXPECT_EQ(d->client_size(), QSizeF(300, 200)) << "its controls do not notice";
    EXPECT_EQ(c->rect(), QRectF(30, 40, 60, 20));
    EXPECT_EQ(c->screen_rect(), QRectF(260, 100 + 48 + 80, 120, 40));
    EXPECT_EQ(GuiInput::control_at(m_core, {379, 267}), c);
    EXPECT_EQ(GuiInput::control_at(m_core, {381, 267}), nullptr);
    EXPECT_EQ(d->to_client(d->to_screen({30, 40, 60, 20}).topLeft()), QPointF(30, 40));
    d->SetLocation(400, 300);
    m_core.set_screen_size(design);
    EXPECT_EQ(d->rect(), QRect(200, 150, 300, 200));
}

TEST_F(AnchorTest, the_present_screen_can_be_taken_as_the_one_that_is_meant)
{
    CDXUTDialog* d = dialog({900, 60, 300, 200});
    d->set_align_type(anchor_top_right);
    m_core.set_screen_size({1600, 900});
    const QRect place = d->rect();
    d->on_pos_scale_changed();
    EXPECT_EQ(d->rect(), place);
    EXPECT_EQ(d->dialog_state().x, place.x());
    EXPECT_EQ(d->dialog_state().base_width, 1600);
    const QByteArray text = saved();
    d->on_pos_scale_changed();
    EXPECT_EQ(saved(), text);

    CDXUTDialog* scaled = dialog({100, 50, 300, 200});
    scaled->set_align_type(anchor_scale);
    m_core.set_screen_size(design);
    const auto state = scaled->shared_state();
    scaled->on_pos_scale_changed();
    EXPECT_EQ(scaled->shared_state(), state) << "what scales keeps what it scales from";
}

TEST_F(AnchorTest, the_root_dialog_is_the_screen)
{
    CDXUTControl* c = button(m_core.GetRootDialog(), {1200, 10, 60, 20});
    c->set_align_type(anchor_top_right);
    m_core.set_screen_size(wide);
    EXPECT_EQ(m_core.GetRootDialog()->rect(), QRect(QPoint(), wide));
    EXPECT_EQ(c->screen_rect(), QRectF(1200 + 641, 10, 60, 20));
    EXPECT_FALSE(m_core.GetRootDialog()->SetLocation(5, 5));
}
