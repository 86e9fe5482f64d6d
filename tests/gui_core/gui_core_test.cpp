#include "support/gui_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class GuiCoreTest : public GuiTest {
protected:
    template <class Objects>
    static QString names(const Objects& objects)
    {
        QStringList list;
        for (const auto* object : objects)
            list << object->name();
        return list.join(u' ');
    }
    template <class Change>
    void act(Change&& change)
    {
        const UserAction action(m_journal, u"act"_s);
        change();
    }
};

} // namespace

TEST_F(GuiCoreTest, dialogs_move_by_one_layer_and_stop_at_the_ends)
{
    CDXUTDialog* a = m_core.create_dialog({}, u"a"_s);
    m_core.create_dialog({}, u"b"_s);
    CDXUTDialog* c = m_core.create_dialog({}, u"c"_s);
    EXPECT_FALSE(m_core.AdjustDialogLayer(c, 0));
    EXPECT_FALSE(m_core.AdjustDialogLayer(a, 1));
    EXPECT_FALSE(m_core.AdjustDialogLayer(m_core.GetRootDialog(), 0));
    EXPECT_TRUE(m_core.AdjustDialogLayer(a, 0));
    EXPECT_EQ(names(m_core.GetDialogs()), u"b a c"_s);
    EXPECT_TRUE(m_core.AdjustDialogLayer(c, 1));
    EXPECT_EQ(names(m_core.GetDialogs()), u"b c a"_s);
}

TEST_F(GuiCoreTest, controls_move_through_the_layers_of_their_dialog)
{
    CDXUTDialog* home = dialog({0, 0, 200, 100});
    CDXUTControl* a = m_core.create_control(0, home, {}, u"a"_s);
    m_core.create_control(1, home, {}, u"b"_s);
    CDXUTControl* c = m_core.create_control(2, home, {}, u"c"_s);
    CDXUTControl* foreign = m_core.create_control(0, m_core.GetRootDialog(), {});
    EXPECT_FALSE(home->SetCtrlLayer(c, 0));
    EXPECT_FALSE(home->SetCtrlLayer(a, 1));
    EXPECT_FALSE(home->SetCtrlLayerUpDown(c, 1));
    EXPECT_FALSE(home->SetCtrlLayerUpDown(a, 0));
    EXPECT_FALSE(home->SetCtrlLayer(foreign, 0));
    EXPECT_FALSE(home->SetCtrlLayerUpDown(foreign, 1));
    EXPECT_EQ(home->GetControlIndex(foreign), -1);
    EXPECT_TRUE(home->SetCtrlLayer(a, 0));
    EXPECT_EQ(names(home->controls()), u"b c a"_s);
    EXPECT_TRUE(home->SetCtrlLayerUpDown(c, 0));
    EXPECT_EQ(names(home->controls()), u"c b a"_s);
    EXPECT_TRUE(home->SetCtrlLayerUpDown(c, 1));
    EXPECT_TRUE(home->SetCtrlLayer(a, 1));
    EXPECT_EQ(names(home->controls()), u"a b c"_s);
    EXPECT_EQ(names(m_core.controls()), names(std::vector{a, home->controls()[1], c, foreign}))
        << "in order of creation";
}

TEST_F(GuiCoreTest, names_of_dialogs_are_cut_at_31_units_and_of_controls_never)
{
    const QString longer(40, u'湖');
    CDXUTDialog* d = m_core.create_dialog({}, longer);
    EXPECT_EQ(d->name(), longer.left(31));
    EXPECT_TRUE(d->set_name(QString(30, u'x') + u"\U0001F600"_s));
    EXPECT_EQ(d->name(), QString(30, u'x'));
    EXPECT_FALSE(d->set_name(QString(30, u'x') + u"\U0001F600"_s)) << "cut, it is the same";
    ASSERT_TRUE(set(*d, "name", longer).ok());
    EXPECT_EQ(d->name().size(), 31);
    CDXUTControl* c = m_core.create_control(0, d, {}, longer);
    EXPECT_EQ(c->name(), longer);
}

TEST_F(GuiCoreTest, undoing_the_first_control_of_a_dialog_takes_it_out_of_the_scene)
{
    CDXUTDialog* home = dialog({});
    EXPECT_TRUE(m_core.controls().empty());
    CDXUTControl* first = nullptr;
    {
        const UserAction action(m_journal);
        first = button(home, {0, 0, 10, 10});
    }
    m_core.SelectControl(first, false);
    m_journal.undo();
    EXPECT_TRUE(m_core.selection().controls.empty());
    EXPECT_FALSE(m_core.selection().contains(first));
    EXPECT_FALSE(first->is_attached());
}

TEST_F(GuiCoreTest, what_cannot_be_made_leaves_no_trace)
{
    CDXUTDialog* home = dialog({});
    const auto state = m_core.shared_state();
    for (const int type : {7, 12, -1, 1000})
        EXPECT_EQ(m_core.create_control(type, home, {}), nullptr) << type;
    EXPECT_EQ(m_core.create_control(DXUT_CONTROL_BUTTON, nullptr, {}), nullptr);
    EXPECT_EQ(m_core.shared_state(), state);
}

TEST_F(GuiCoreTest, sizes_below_zero_count_as_zero_and_are_no_change_twice)
{
    CDXUTDialog* d = dialog({0, 0, 100, 100});
    CDXUTControl* c = button(d, {0, 0, -10, 10});
    EXPECT_EQ(c->rect().size(), QSizeF(0, 10));
    EXPECT_TRUE(c->SetSize(-5, -5));
    EXPECT_FALSE(c->SetSize(-7, -7));
    EXPECT_TRUE(d->SetSize(-5, 5));
    EXPECT_FALSE(d->SetSize(-9, 5));
    EXPECT_EQ(d->rect().size(), QSize(0, 5));
}

TEST_F(GuiCoreTest, links_between_objects_are_right_at_once_after_undo_and_redo)
{
    CDXUTDialog* a = dialog({0, 0, 200, 100});
    CDXUTDialog* b = dialog({300, 0, 200, 100});
    CDXUTControl* c = button(a, {0, 0, 50, 20});
    act([&] { m_core.move_control_to(c, b); });
    EXPECT_EQ(c->dialog(), b);
    m_journal.undo();
    EXPECT_EQ(c->dialog(), a);
    EXPECT_EQ(c->screen_rect().x(), 0);
    m_journal.redo();
    EXPECT_EQ(c->dialog(), b);
    act([&] { m_core.remove_control(c); });
    EXPECT_EQ(c->dialog(), nullptr);
    m_journal.undo();
    EXPECT_EQ(c->dialog(), b);
    act([&] { m_core.remove_dialog(b); });
    EXPECT_FALSE(c->is_attached());
    EXPECT_FALSE(b->is_attached());
    m_journal.undo();
    EXPECT_TRUE(c->is_attached());
    EXPECT_TRUE(b->is_attached());
    EXPECT_EQ(m_core.find_control(c->id()), c);
}

TEST_F(GuiCoreTest, the_selection_never_holds_what_is_gone)
{
    CDXUTDialog* a = dialog({});
    CDXUTDialog* b = nullptr;
    act([&] { b = dialog({}); });
    m_core.SelectDialog(a, false);
    m_core.SelectDialog(b, true);
    act([&] { m_core.remove_dialog(b); });
    EXPECT_EQ(m_core.selection().dialogs, std::vector{a});
    EXPECT_EQ(m_core.selection().current_dialog, a);
    m_journal.undo();
    CDXUTControl* c = nullptr;
    act([&] { c = button(b, {}); });
    CDXUTControl* kept = button(a, {});
    m_core.SelectControl(kept, false);
    m_core.SelectControl(c, true);
    EXPECT_EQ(m_core.selection().current_dialog, b);
    m_core.live().hovered = m_core.live().focused = c;
    act([&] { m_core.remove_dialog(b); });
    EXPECT_EQ(m_core.selection().controls, std::vector<CDXUTControl*>{kept});
    EXPECT_EQ(m_core.selection().current_control, kept);
    EXPECT_NE(m_core.selection().current_dialog, b);
    EXPECT_EQ(m_core.live().hovered, nullptr);
    EXPECT_EQ(m_core.live().focused, nullptr);
    m_document.install(m_document.empty_scene());
    EXPECT_TRUE(m_core.selection().controls.empty());
    EXPECT_EQ(m_core.selection().current_dialog, nullptr);
}

TEST_F(GuiCoreTest, undo_and_redo_bring_back_what_was_selected_before_and_after_a_step)
{
    CDXUTDialog* home = dialog({});
    CDXUTDialog* other = dialog({});
    CDXUTControl* a = button(home, {});
    CDXUTControl* b = button(home, {});
    m_document.forget_history();
    const auto selected = [&] {
        const SelectionRecord& now = m_core.selection();
        return names(now.dialogs) + u'/' + names(now.controls) + u'/'
            + (now.current_dialog ? now.current_dialog->name() : QString()) + u'/'
            + (now.current_control ? now.current_control->name() : QString());
    };
    const QString both = u"/Button2 Button1/Dialog1/Button1"_s;
    m_core.SelectControls({b, a});
    act([&] { a->SetLocation(5, 5); });
    m_core.SelectDialog(other, false);
    act([&] { other->SetVisible(false); });
    act([&] { m_core.SelectControl(button(other, {}), false); });
    act([&] { m_core.remove_controls({a, b}); });
    m_core.ClearCtrlSelection();
    m_core.ClearDialogSelection();

    const QStringList steps{both, u"Dialog2//Dialog2/"_s, u"Dialog2//Dialog2/"_s, u"/Button3/Dialog2/Button3"_s};
    for (int turn = 0; turn < 2; ++turn) {
        for (auto step = steps.crbegin(); step != steps.crend(); ++step) {
            ASSERT_TRUE(m_journal.undo());
            EXPECT_EQ(selected(), *step);
        }
        m_core.SelectDialog(home, false);
        ASSERT_TRUE(m_journal.redo());
        EXPECT_EQ(selected(), both) << "what was moved";
        for (int i = 1; i < 4; ++i)
            ASSERT_TRUE(m_journal.redo());
        EXPECT_EQ(selected(), u"/Button3/Dialog2/Button3"_s);
    }
    m_core.SelectControl(m_core.controls().back(), false);
    ASSERT_TRUE(m_journal.go_to(0));
    EXPECT_EQ(selected(), both) << "over several steps too";
    act([&] { m_core.remove_control(a); });
    EXPECT_EQ(selected(), u"/Button2/Dialog1/Button2"_s);
    ASSERT_TRUE(m_journal.undo());
    EXPECT_EQ(selected(), both) << "the steps that were undone are forgotten";
    m_journal.begin(u"dropped"_s);
    m_core.remove_control(b);
    m_journal.cancel();
    m_journal.end();
    EXPECT_TRUE(b->is_attached());
    m_core.SelectControl(b, false);
    act([&] { b->SetVisible(false); });
    m_core.SelectDialog(other, false);
    ASSERT_TRUE(m_journal.undo());
    EXPECT_EQ(selected(), u"/Button2/Dialog1/Button2"_s) << "a dropped action left nothing behind";
}

TEST_F(GuiCoreTest, the_current_dialog_is_the_home_of_the_current_control_whatever_becomes_of_the_dialogs_selection)
{
    CDXUTDialog* home = dialog({});
    CDXUTControl* c = button(home, {});
    m_core.SelectControl(c, false);
    m_core.ClearDialogSelection();
    EXPECT_EQ(m_core.selection().current_control, c);
    EXPECT_EQ(m_core.selection().current_dialog, home);
    m_core.ClearCtrlSelection();
    m_core.ClearDialogSelection();
    EXPECT_EQ(m_core.selection().current_dialog, nullptr);
}

TEST_F(GuiCoreTest, new_objects_take_the_smallest_number_that_no_name_has)
{
    CDXUTDialog* home = dialog({});
    EXPECT_EQ(home->name(), u"Dialog1"_s);
    EXPECT_EQ(dialog({})->name(), u"Dialog2"_s);
    CDXUTControl* first = button(home, {});
    EXPECT_EQ(first->name() + button(home, {})->name(), u"Button1Button2"_s);
    (void)set(*first, "name", u"Button4"_s);
    m_core.create_control(DXUT_CONTROL_STATIC, home, {}, u"Button3"_s);
    EXPECT_EQ(button(home, {})->name(), u"Button1"_s);
    EXPECT_EQ(button(home, {})->name(), u"Button5"_s);
    act([&] { m_core.remove_control(first); });
    EXPECT_EQ(button(home, {})->name(), u"Button4"_s);
    act([&] { (void)set(*home, "name", u"home"_s); });
    EXPECT_EQ(m_core.free_name(u"Dialog"_s), u"Dialog1"_s);
    m_journal.undo();
    EXPECT_EQ(dialog({})->name(), u"Dialog3"_s);
}

TEST_F(GuiCoreTest, removing_many_controls_leaves_the_others_listed_and_selected)
{
    CDXUTDialog* a = dialog({});
    CDXUTDialog* b = dialog({});
    std::vector<CDXUTControl*> all;
    for (int i = 0; i < 8; ++i)
        all.push_back(button(i % 2 ? b : a, QRectF(i, 0, 10, 10)));
    const auto of_a = a->controls();
    m_core.SelectControls(all);
    // All of one dialog, one of the other, in turns; one twice.
    act([&] { m_core.remove_controls({all[0], all[1], all[2], all[0], all[4], all[6]}); });
    EXPECT_TRUE(a->controls().isEmpty());
    EXPECT_EQ(b->controls(), (QList<CDXUTControl*>{all[3], all[5], all[7]}));
    EXPECT_EQ(m_core.selection().controls, (std::vector{all[3], all[5], all[7]}));
    EXPECT_EQ(m_core.selection().current_control, all[7]);
    act([&] { m_core.remove_controls(m_core.selection().controls); });
    EXPECT_TRUE(m_core.selection().controls.empty());
    EXPECT_EQ(m_core.selection().current_control, nullptr);
    m_journal.undo();
    m_journal.undo();
    EXPECT_EQ(a->controls(), of_a);
    EXPECT_EQ(m_core.controls(), all);
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(all[i]->dialog(), i % 2 ? b : a) << i;
    }
    EXPECT_EQ(m_core.selection().controls, all) << "as it was";
    m_core.SelectControls(all);
    m_core.ClearCtrlSelection();
    m_core.SelectControl(all[2], true);
    EXPECT_EQ(m_core.selection().controls, std::vector{all[2]});
    EXPECT_FALSE(m_core.selection().contains(all[3]));
}

TEST_F(GuiCoreTest, an_id_is_not_used_again_after_undo)
{
    CDXUTDialog* first = nullptr;
    act([&] { first = dialog({}); });
    const quint32 id = first->id();
    m_journal.undo();
    EXPECT_EQ(m_core.find_dialog(id), nullptr);
    act([&] { EXPECT_GT(dialog({})->id(), id); });
}

TEST_F(GuiCoreTest, forgetting_the_history_lets_go_of_removed_objects)
{
    CDXUTDialog* home = dialog({});
    const auto gone = std::weak_ptr(dialog({})->shared_from_this());
    const auto kept = std::weak_ptr(button(home, {})->shared_from_this());
    m_core.remove_dialog(static_cast<CDXUTDialog*>(gone.lock().get()));
    EXPECT_FALSE(gone.expired()) << "undo may bring it back";
    m_core.document().forget_history();
    EXPECT_TRUE(gone.expired());
    EXPECT_FALSE(kept.expired());
    EXPECT_TRUE(m_journal.is_saved());
}
