#include "mouse_fixture.h"

#include "tools/selection_overlay.h"

using namespace tarn;
using namespace tarn::test;
using Editor = GuiSceneEditor;

namespace {

class ArrangingTest : public MouseToolsTest {
protected:
    void pull(Handle handle, QPointF offset, Qt::KeyboardModifiers modifiers)
    {
        const QPointF grip = handle_rect(resizable_frame(core()), handle).center();
        drag(grip, grip + offset, true, modifiers);
    }
    QString layers(const CDXUTDialog* d)
    {
        QStringList names;
        for (const CDXUTControl* c : d->controls())
            names << c->name();
        return names.join(u' ');
    }
};

struct Pull {
    Handle handle;
    Qt::KeyboardModifiers modifiers;
    QRectF frame; ///< what (50, 50, 100, 60) becomes by a drag of (20, 3)
};

} // namespace

TEST_F(ArrangingTest, shift_keeps_the_ratio_and_alt_the_centre)
{
    CDXUTControl* c = button(home(), {50, 50, 100, 60});
    const Pull cases[] = {
        {Handle::BottomRight, Qt::ShiftModifier, {50, 50, 120, 72}},
        {Handle::TopLeft, Qt::ShiftModifier, {55, 53, 95, 57}},
        {Handle::Right, Qt::ShiftModifier, {50, 44, 120, 72}},
        {Handle::BottomRight, Qt::AltModifier, {30, 47, 140, 66}},
        {Handle::Left, Qt::AltModifier, {70, 50, 60, 60}},
        {Handle::BottomRight, Qt::ShiftModifier | Qt::AltModifier, {30, 38, 140, 84}},
    };
    for (const Pull& wanted : cases) {
        core().SelectControl(c, false);
        pull(wanted.handle, {20, 3}, wanted.modifiers);
        EXPECT_EQ(c->rect(), wanted.frame) << int(wanted.handle) << " " << int(wanted.modifiers);
        EXPECT_EQ(undo_all(), 1);
    }
    pull(Handle::Right, {-500, 0}, Qt::ShiftModifier);
    EXPECT_EQ(c->rect().height(), 4) << "no side gets shorter";
    undo_all();
    const QPointF grip = handle_rect(resizable_frame(core()), Handle::Right).center();
    drag(grip, grip + QPointF(20, 0), false, Qt::AltModifier);
    mouse(Kind::Move, grip + QPointF(20, 0));
    EXPECT_EQ(c->rect(), QRectF(50, 50, 120, 60)) << "the key was let go during the drag";
    EXPECT_TRUE(escape());
    EXPECT_EQ(c->rect(), QRectF(50, 50, 100, 60));
}

TEST_F(ArrangingTest, controls_of_one_dialog_resize_in_their_common_frame)
{
    CDXUTDialog* d = home();
    CDXUTControl* a = button(d, {10, 10, 40, 20});
    CDXUTControl* b = button(d, {60, 40, 50, 20});
    CDXUTControl* locked = button(d, {300, 200, 20, 20});
    locked->set_locked(true);
    core().document().forget_history();
    for (CDXUTControl* c : {a, b, locked})
        core().SelectControl(c, true);
    EXPECT_EQ(resizable_frame(core()).size(), QSizeF(100, 50)) << "what is locked does not count";
    pull(Handle::BottomRight, {100, 50}, {});
    EXPECT_EQ(a->rect(), QRectF(10, 10, 80, 40));
    EXPECT_EQ(b->rect(), QRectF(110, 70, 100, 40));
    EXPECT_EQ(locked->rect(), QRectF(300, 200, 20, 20));
    EXPECT_EQ(undo_all(), 1);
    core().SelectControl(button(core().GetRootDialog(), {0, 0, 10, 10}), true);
    EXPECT_TRUE(resizable_frame(core()).isNull()) << "not across dialogs";
}

TEST_F(ArrangingTest, a_run_of_arrow_keys_is_one_step_until_something_else_happens)
{
    CDXUTDialog* d = home();
    CDXUTControl* a = button(d, {10, 10, 40, 20});
    CDXUTControl* hidden = button(d, {60, 40, 50, 20});
    hidden->SetVisible(false);
    core().document().forget_history();
    EXPECT_FALSE(key(Qt::Key_Left)) << "nothing is selected";
    core().SelectControl(hidden, false);
    EXPECT_TRUE(key(Qt::Key_Left));
    EXPECT_FALSE(m_scene.journal().can_undo());
    core().SelectControl(a, true);
    key(Qt::Key_Right);
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_Left, Qt::ShiftModifier | Qt::KeypadModifier);
    EXPECT_EQ(a->rect().topLeft(), QPointF(1, 20));
    EXPECT_EQ(hidden->rect().topLeft(), QPointF(60, 40));
    EXPECT_FALSE(key(Qt::Key_Left, Qt::ControlModifier));
    click(a->screen_rect().center());
    key(Qt::Key_Up);
    EXPECT_EQ(undo_all(), 2) << "selecting ends the run";
    core().SelectDialog(d, false);
    key(Qt::Key_Up);
    EXPECT_EQ(d->rect().topLeft(), QPoint(100, 99));
}

TEST_F(ArrangingTest, drawing_can_be_square_and_from_the_centre_and_stays_in_the_dialog_of_the_press)
{
    CDXUTDialog* d = home();
    m_scene.SetMTFunction(2, DXUT_CONTROL_BUTTON);
    drag({150, 200}, {190, 210}, true, Qt::ShiftModifier);
    EXPECT_EQ(d->controls().first()->screen_rect(), QRectF(150, 200, 40, 40));
    m_scene.SetMTFunction(2, DXUT_CONTROL_BUTTON);
    drag({120, 200}, {90, 190}, true, Qt::AltModifier);
    ASSERT_EQ(d->GetControlNum(), 2) << "the frame reaches out of the dialog, the press did not";
    EXPECT_EQ(d->controls().last()->screen_rect(), QRectF(90, 190, 60, 20));
}

TEST_F(ArrangingTest, layers_keep_the_order_of_what_is_selected_in_one_step)
{
    CDXUTDialog* d = home();
    for (const QString& name : {u"a"_s, u"b"_s, u"c"_s, u"d"_s})
        control(DXUT_CONTROL_BUTTON, d, {10, 10, 40, 20}, name);
    core().document().forget_history();
    int code = 0;
    m_world.on_broadcast = [&](int told) { code = told; };
    const auto in_layers = [&](const QList<int>& which, int command) {
        core().ClearCtrlSelection();
        const auto controls = d->controls();
        for (const int i : which)
            core().SelectControl(controls[i], true);
        EXPECT_TRUE(run(command).ok());
        EXPECT_EQ(code, ui_controls_changed);
        const QString order = layers(d);
        EXPECT_LE(undo_all(), 1);
        return order;
    };
    EXPECT_EQ(in_layers({0, 2}, Editor::to_top), u"b d a c"_s);
    EXPECT_EQ(in_layers({1, 3}, Editor::to_bottom), u"b d a c"_s);
    EXPECT_EQ(in_layers({0, 1}, Editor::one_up), u"c a b d"_s);
    EXPECT_EQ(in_layers({2, 3}, Editor::one_up), u"a b c d"_s) << "at the end the order stays";
    EXPECT_EQ(in_layers({1, 2}, Editor::one_down), u"b c a d"_s);
    EXPECT_EQ(layers(d), u"a b c d"_s);
}

TEST_F(ArrangingTest, dialogs_selected_together_keep_their_order_and_go_with_one_code)
{
    const QList<CDXUTDialog*> made{dialog({0, 0, 50, 50}), dialog({60, 0, 50, 50}), dialog({120, 0, 50, 50})};
    core().document().forget_history();
    const auto select = [&] {
        core().SelectDialog(made[1], false);
        core().SelectDialog(made[2], true);
    };
    select();
    EXPECT_TRUE(run(Editor::one_up).ok());
    EXPECT_EQ(core().GetDialogs(), made);
    EXPECT_TRUE(run(Editor::to_bottom).ok());
    EXPECT_EQ(core().GetDialogs(), (QList{made[1], made[2], made[0]}));
    EXPECT_EQ(undo_all(), 1);

    select();
    std::vector<int> codes;
    m_world.on_broadcast = [&](int code) { codes.push_back(code); };
    EXPECT_TRUE(run(Editor::remove).ok());
    EXPECT_EQ(core().GetDialogs(), QList{made[0]});
    EXPECT_EQ(codes, std::vector<int>{ui_scene_changed});
    EXPECT_EQ(undo_all(), 1);
    EXPECT_EQ(core().GetDialogs(), made);
}

TEST_F(ArrangingTest, the_current_dialog_is_that_of_the_current_control_wherever_it_comes)
{
    CDXUTDialog* from = home();
    CDXUTDialog* to = dialog({500, 100, 100, 100});
    CDXUTControl* c = button(from, {10, 10, 40, 20});
    core().SelectControl(c, false);
    m_scene.switch_ctrl_dialog({c}, to);
    EXPECT_EQ(core().selection().current_dialog, to);
    m_scene.journal().undo();
    EXPECT_EQ(core().selection().current_dialog, from);
    m_scene.switch_ctrl_dialog(c, to);
    EXPECT_EQ(core().selection().current_dialog, to);
}

TEST_F(ArrangingTest, commands_are_one_step_each_and_spare_what_is_locked)
{
    CDXUTDialog* d = home();
    CDXUTControl* a = button(d, {10, 10, 40, 20});
    CDXUTControl* b = button(d, {60, 40, 50, 20});
    const QByteArray before = text();
    std::vector<int> codes;
    m_world.on_broadcast = [&](int code) { codes.push_back(code); };
    const auto code_of = [&](int command) {
        core().SelectControl(a, false);
        core().SelectControl(b, true);
        codes.clear();
        EXPECT_TRUE(run(command).ok());
        const int last = codes.back();
        EXPECT_EQ(undo_all(), 1);
        EXPECT_TRUE(same_text(text(), before));
        return last;
    };
    EXPECT_EQ(code_of(Editor::cut), ui_control_selected);
    EXPECT_EQ(code_of(Editor::remove), ui_control_selected);
    EXPECT_EQ(code_of(Editor::duplicate), ui_control_selected);
    EXPECT_EQ(code_of(Editor::lock), ui_control_properties);
    EXPECT_EQ(code_of(Editor::hide), ui_control_properties);

    a->set_locked(true);
    core().SelectControl(a, false);
    core().SelectControl(b, true);
    EXPECT_TRUE(run(Editor::remove).ok());
    EXPECT_EQ(d->controls(), QList{a});
    core().SelectControl(a, false);
    EXPECT_TRUE(run(Editor::cut).ok());
    EXPECT_EQ(d->controls(), QList{a});
    m_scene.play(true);
    EXPECT_TRUE(run(Editor::duplicate).ok());
    EXPECT_EQ(d->controls(), QList{a}) << "not while it runs";
    EXPECT_TRUE(m_scene.editor().context_commands({0, 0}).empty());
}

TEST_F(ArrangingTest, a_text_in_place_is_stored_once_and_never_in_what_is_gone)
{
    CDXUTDialog* d = home();
    auto* c = static_cast<CDXUTButton*>(button(d, {10, 10, 100, 20}));
    c->SetText(u"old"_s);
    core().document().forget_history();
    auto text = m_scene.editor().text_at(c->screen_rect().center());
    ASSERT_TRUE(text);
    EXPECT_EQ(text->text, u"old"_s);
    EXPECT_EQ(text->place, c->screen_rect());
    text->commit(u"old"_s);
    EXPECT_FALSE(m_scene.journal().can_undo());
    text->commit(u"new"_s);
    EXPECT_EQ(c->text(), u"new"_s);
    EXPECT_EQ(undo_all(), 1);
    c->SetText(QString(20'000, u'x'));
    EXPECT_FALSE(m_scene.editor().text_at(c->screen_rect().center())) << "too long for a field";
    m_scene.RemoveCtrl(c);
    text->commit(u"late"_s);
    m_scene.new_scene();
    text->commit(u"later"_s);
    EXPECT_FALSE(m_scene.journal().can_undo());
    EXPECT_FALSE(m_scene.editor().text_at({5, 5}));
}

TEST_F(ArrangingTest, many_controls_follow_the_mouse_with_one_code_a_move)
{
    CDXUTDialog* d = home();
    for (int i = 0; i < 100; ++i)
        control(DXUT_CONTROL_BUTTON, d, QRectF(i % 10 * 40, i / 10 * 30, 40, 30));
    core().document().forget_history();
    EXPECT_TRUE(run(Editor::all).ok());
    EXPECT_EQ(selected().size(), 100u);
    int codes = 0;
    drag({110, 130}, {120, 140}, false);
    m_world.on_broadcast = [&](int) { ++codes; };
    for (int i = 1; i <= 20; ++i)
        mouse(Kind::Move, QPointF(120 + i, 140));
    EXPECT_EQ(codes, 20);
    mouse(Kind::Release, {140, 140});
    EXPECT_EQ(undo_all(), 1);
}
