#include "design/align_selection.h"
#include "gui_core/anchor.h"
#include "support/gui_fixture.h"

namespace tarn::test {

namespace {

class AlignSelection : public GuiTest {
protected:
    template <class Object>
    void select(std::initializer_list<Object*> objects)
    {
        m_core.ClearCtrlSelection();
        m_core.ClearDialogSelection();
        for (Object* object : objects) {
            if constexpr (std::is_same_v<Object, CDXUTDialog>)
                m_core.SelectDialog(object, true);
            else
                m_core.SelectControl(object, true);
        }
        m_journal.clear();
    }
    template <class Operation>
    bool act(Operation operation)
    {
        const UserAction action(m_journal, u"act"_s);
        return operation(m_core);
    }
    bool align(Edge edge)
    {
        return act([=](CGuiCore& core) { return align_selection(core, edge); });
    }
    bool match(Dimension dimension)
    {
        return act([=](CGuiCore& core) { return match_selection(core, dimension); });
    }
    bool distribute(Qt::Orientation direction)
    {
        return act([=](CGuiCore& core) { return distribute_selection(core, direction); });
    }
    bool align_to_area(Edge edge)
    {
        return act([=](CGuiCore& core) { return align_selection_to_area(core, edge); });
    }
    CDXUTDialog* captioned(const QRect& rect, int caption_height)
    {
        CDXUTDialog* made = dialog(rect);
        EXPECT_TRUE(set(*made, "caption_shown", caption_height > 0));
        EXPECT_TRUE(set(*made, "caption_height", qint64(caption_height)));
        return made;
    }
};

} // namespace

TEST_F(AlignSelection, only_sizes_reach_controls_of_other_dialogs)
{
    CDXUTDialog* home = dialog({0, 0, 300, 300});
    auto* other = button(dialog({0, 0, 300, 300}), {77, 20, 10, 10});
    auto* first = button(home, {10.5, 0, 10, 10});
    auto* last = button(home, {100, 0, 20, 30});
    auto* current = button(home, {50, 0, 30, 20});
    first->set_locked(true);
    select<CDXUTControl>({last, other, first, current});

    EXPECT_TRUE(distribute(Qt::Horizontal)); // From 10 to 120, with widths of 60.
    EXPECT_EQ(first->rect(), QRectF(10, 0, 10, 10)) << "a lock is against the mouse";
    EXPECT_EQ(current->x(), 45);
    EXPECT_EQ(last->x(), 100);
    EXPECT_TRUE(align(Edge::Right));
    EXPECT_EQ(last->x(), 55);
    EXPECT_EQ(other->rect(), QRectF(77, 20, 10, 10));
    EXPECT_TRUE(match(Dimension::Both));
    for (const auto* control : {first, last, current, other})
        EXPECT_EQ(control->rect().size(), QSizeF(30, 20));

    EXPECT_TRUE(m_journal.undo() && m_journal.undo() && m_journal.undo());
    EXPECT_FALSE(m_journal.can_undo()) << "each was one step";
    EXPECT_EQ(first->rect(), QRectF(10.5, 0, 10, 10));
    EXPECT_EQ(last->rect(), QRectF(100, 0, 20, 30));
}

TEST_F(AlignSelection, what_stands_right_is_not_written)
{
    CDXUTDialog* home = dialog({0, 0, 333, 300});
    auto* scaled = button(home, {33.3, 0, 10, 20});
    scaled->set_align_type(anchor_scale);
    home->SetSize(1000, 300);
    ASSERT_EQ(scaled->x(), 100);
    ASSERT_NE(scaled->rect().x(), 100) << "as near as a float comes";
    auto* current = button(home, {100, 50, 100, 20});
    select<CDXUTControl>({scaled, current});
    EXPECT_TRUE(align(Edge::Left));
    EXPECT_FALSE(m_journal.can_undo());
    EXPECT_TRUE(align(Edge::Top));
    EXPECT_TRUE(m_journal.undo());
    EXPECT_FALSE(m_journal.can_undo());
}

TEST_F(AlignSelection, dialogs_are_compared_with_their_caption_bars)
{
    CDXUTDialog* reference = captioned({10, 50, 101, 100}, 20);
    CDXUTDialog* plain = captioned({300, 300, 51, 40}, 0);
    CDXUTDialog* tall_caption = captioned({500, 300, 60, 40}, 200);
    select({plain, m_core.GetRootDialog(), tall_caption, reference});

    EXPECT_TRUE(align(Edge::Bottom));
    EXPECT_EQ(plain->rect(), QRect(300, 50 + 120 - 40, 51, 40));
    EXPECT_EQ(tall_caption->rect().y(), 50 + 120 - 240);
    EXPECT_TRUE(align(Edge::MiddleX));
    EXPECT_EQ(plain->rect().x(), 10 + 50 - 25);
    EXPECT_TRUE(match(Dimension::Height));
    EXPECT_EQ(plain->rect().height(), 120);
    EXPECT_EQ(tall_caption->rect().height(), 0) << "it has no room below the caption bar";
    EXPECT_EQ(reference->rect(), QRect(10, 50, 101, 100));
    EXPECT_FALSE(distribute(Qt::Horizontal)) << "dialogs are not spread";

    while (m_journal.undo()) {}
    EXPECT_EQ(plain->rect(), QRect(300, 300, 51, 40));
}

TEST_F(AlignSelection, does_nothing_without_a_reference)
{
    EXPECT_FALSE(align(Edge::Left) || match(Dimension::Both) || align_to_area(Edge::Left));
    CDXUTDialog* home = dialog({0, 0, 300, 300});
    select({button(home, {7, 0, 10, 10}), button(home, {100, 0, 20, 30})});
    m_core.selection().current_control = nullptr;
    EXPECT_FALSE(align(Edge::Left) || match(Dimension::Both) || distribute(Qt::Vertical) || align_to_area(Edge::Left));
    select({home, dialog({5, 5, 10, 10})});
    m_core.selection().current_dialog = nullptr;
    EXPECT_FALSE(align(Edge::Left) || match(Dimension::Both) || align_to_area(Edge::Left));
    select({home->controls()[0]});
    EXPECT_FALSE(distribute(Qt::Horizontal)) << "one control alone";
    EXPECT_FALSE(m_journal.can_undo());
}

TEST_F(AlignSelection, spreading_looks_at_the_controls_even_while_dialogs_count)
{
    CDXUTDialog* home = dialog({0, 0, 300, 300});
    auto* middle = button(home, {11, 0, 10, 10});
    select({button(home, {0, 0, 10, 10}), middle, button(home, {100, 0, 10, 10})});
    m_core.selection().controls_selected = false;
    EXPECT_TRUE(distribute(Qt::Horizontal));
    EXPECT_EQ(middle->x(), 50);
}

TEST_F(AlignSelection, controls_go_to_the_edges_of_their_dialog_and_stay_there)
{
    CDXUTDialog* home = captioned({40, 40, 301, 200}, 25);
    auto* a = button(home, {10.5, 20, 30, 10});
    auto* b = button(home, {50, 60, 41, 20});
    b->set_align_type(anchor_bottom);
    select({a, b});

    EXPECT_TRUE(align_to_area(Edge::Right)); // From 10 to 91.
    EXPECT_EQ(a->rect(), QRectF(220.5, 20, 30, 10));
    EXPECT_EQ(b->rect(), QRectF(260, 60, 41, 20));
    EXPECT_EQ(a->align_type(), anchor_top_right);
    EXPECT_EQ(b->align_type(), anchor_bottom_right);
    EXPECT_TRUE(align_to_area(Edge::Bottom));
    EXPECT_EQ(b->y(), 225 - 20) << "the caption bar counts";
    EXPECT_EQ(a->y(), 225 - 60);
    home->SetSize(401, 200);
    EXPECT_EQ(b->x(), 360) << "the anchor holds";
    home->SetSize(301, 200);

    EXPECT_TRUE(align_to_area(Edge::MiddleX)); // 150.5 - 220, cut off, less half of 81.
    EXPECT_EQ(b->x(), 260 - 69 - 40.5);
    EXPECT_EQ(b->align_type(), anchor_bottom);
    while (m_journal.undo()) {}
    EXPECT_EQ(a->rect(), QRectF(10.5, 20, 30, 10));
    EXPECT_EQ(a->align_type(), anchor_top_left);
}

TEST_F(AlignSelection, dialogs_and_controls_of_the_root_dialog_go_to_the_edges_of_the_screen)
{
    auto* on_screen = button(m_core.GetRootDialog(), {3, 3, 30, 10});
    select({on_screen});
    EXPECT_TRUE(align_to_area(Edge::Bottom));
    EXPECT_EQ(on_screen->y(), 710);

    CDXUTDialog* a = captioned({100, 50, 200, 100}, 20);
    CDXUTDialog* b = captioned({130, 80, 100, 51}, 0);
    b->set_align_type(anchor_centre);
    select({a, b});
    EXPECT_TRUE(align_to_area(Edge::Bottom)); // 50 to 170
    EXPECT_EQ(a->rect().topLeft(), QPoint(100, 600));
    EXPECT_EQ(b->rect().topLeft(), QPoint(130, 630));
    EXPECT_EQ(a->align_type(), anchor_bottom_left);
    EXPECT_EQ(b->align_type(), anchor_bottom);
    m_core.set_screen_size({1280, 820});
    EXPECT_EQ(a->rect().y(), 700);
    EXPECT_EQ(m_core.GetRootDialog()->align_type(), anchor_top_left);
}

} // namespace tarn::test
