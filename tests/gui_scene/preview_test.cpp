#include "support/scene_fixture.h"

#include "gui_core/dxut_edit_box.h"
#include "gui_draw/gui_painter.h"
#include "script/script_runtime.h"

#include <QPainter>

#include <array>

using namespace tarn;
using namespace tarn::test;

namespace {

class PreviewTest : public SceneTest {
protected:
    PreviewTest()
    {
        read_sample(u"tiny"_s);
        m_fire = static_cast<CDXUTCheckBox*>(core().find_control(12));
        m_camp = core().find_dialog(2);
    }
    void mouse(MouseEvent::Kind kind, QPointF place)
    {
        const auto button = kind == MouseEvent::Kind::Move ? Qt::NoButton : Qt::LeftButton;
        m_world.mouse_tool()->mouse({kind, place, button, {}});
    }
    void click(QPointF place)
    {
        mouse(MouseEvent::Kind::Press, place);
        mouse(MouseEvent::Kind::Release, place);
    }

    QImage picture()
    {
        QImage image(core().screen_size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        QPainter painter(&image);
        GuiPainter().paint(painter, core(), image.rect(), 1);
        return image;
    }

    CDXUTCheckBox* m_fire;
    CDXUTDialog* m_camp;
};

} // namespace

TEST_F(PreviewTest, runs_the_interface_and_gives_everything_back_as_it_was)
{
    const QByteArray authored = text();
    ASSERT_TRUE(m_fire->GetChecked());
    (void)m_camp->set_property(*m_camp->fields().find("minimize_button"), true);
    m_scene.journal().undo();
    m_scene.play(true);
    click(m_fire->screen_rect().center());
    EXPECT_FALSE(m_fire->GetChecked());
    mouse(MouseEvent::Kind::Press, {60, 70});
    mouse(MouseEvent::Kind::Move, {160, 170});
    mouse(MouseEvent::Kind::Release, {160, 170});
    EXPECT_EQ(m_camp->rect().topLeft(), QPoint(140, 160));
    click(m_camp->caption_button_rect(CDXUTDialog::CaptionButton::Close).center());
    EXPECT_FALSE(m_camp->GetVisible());
    EXPECT_TRUE(same_text(text(), authored)) << "what is shown is not what is authored";
    m_scene.play(false);
    EXPECT_TRUE(same_text(text(), authored));
    EXPECT_FALSE(m_scene.journal().can_undo());
    EXPECT_EQ(m_fire->visual_state(), VisualState::Normal);
    click({600, 600});
    EXPECT_TRUE(same_text(text(), authored)) << "the mouse edits again";
}

TEST_F(PreviewTest, saving_while_it_runs_writes_what_was_authored_and_the_preview_goes_on)
{
    const QByteArray authored = saved_bytes();
    m_scene.play(true);
    click(m_fire->screen_rect().center());
    {
        const ShownWrites writes(m_world.document());
        m_camp->SetLocation(500, 400);
    }
    EXPECT_TRUE(saved_bytes() == authored);
    EXPECT_FALSE(m_fire->GetChecked());
    EXPECT_EQ(m_camp->rect().topLeft(), QPoint(500, 400));
    m_scene.play(false);
    EXPECT_TRUE(saved_bytes() == authored);
}

TEST_F(PreviewTest, structure_changed_while_it_runs_is_given_back_too)
{
    const QByteArray authored = text();
    m_scene.play(true);
    {
        const ShownWrites writes(m_world.document());
        CDXUTDialog* made = dialog({10, 10, 100, 100});
        control(DXUT_CONTROL_BUTTON, made, {0, 0, 10, 10});
        core().move_control_to(m_fire, made);
        core().remove_dialog(m_camp);
        core().SelectDialog(made, false);
    }
    EXPECT_TRUE(same_text(text(), authored));
    EXPECT_FALSE(m_camp->is_attached());
    m_scene.play(false);
    EXPECT_TRUE(same_text(text(), authored));
    EXPECT_EQ(m_fire->dialog(), m_camp);
    EXPECT_TRUE(core().selection().dialogs.empty());
}

TEST_F(PreviewTest, a_minimised_dialog_is_restored_at_the_end)
{
    m_scene.play(true);
    m_camp->set_minimized(true);
    m_scene.play(false);
    EXPECT_FALSE(m_camp->minimized());
}

TEST_F(PreviewTest, what_was_scrolled_stands_as_it_was_made_in_the_view_and_in_the_next_preview)
{
    QStringList many;
    for (int i = 0; i < 60; ++i)
        many.append(u"line %1"_s.arg(i));
    const std::tuple<int, const char*, Value> makes[] = {
        {DXUT_CONTROL_LISTBOX, "items", many},
        {DXUT_CONTROL_COMBOBOX, "items", many},
        {DXUT_CONTROL_INFOBOX, "lines", many},
        {DXUT_CONTROL_EDITBOX, "text", u"more than fits into its field"_s},
    };
    std::vector<CDXUTControl*> made;
    for (const auto& [type, field, value] : makes) {
        made.push_back(control(type, core().GetRootDialog(), {600, double(10 + 120 * made.size()), 80, 100}));
        (void)made.back()->set_property(*made.back()->fields().find(field), value);
    }
    const QImage authored = picture();
    m_scene.play(true);
    const QImage fresh = picture();
    for (CDXUTControl* c : made) {
        click(c->screen_rect().center());
        c->key_pressed(Qt::Key_End, {});
        m_world.mouse_tool()->wheel(c->screen_rect().center(), c == made[2] ? 30 : -30);
    }
    click(made[1]->screen_rect().center());
    {
        const ShownWrites writes(m_world.document());
        core().remove_control(made[1]);
    }
    m_scene.play(false);
    EXPECT_EQ(picture() == authored, true);
    EXPECT_TRUE(made[1]->popup_rect().isEmpty());
    m_scene.play(true);
    EXPECT_EQ(picture() == fresh, true);
}

TEST_F(PreviewTest, a_drag_under_way_when_it_ends_does_not_go_on_in_the_next_one)
{
    m_scene.play(true);
    mouse(MouseEvent::Kind::Press, {60, 70});
    m_scene.play(false);
    m_scene.play(true);
    mouse(MouseEvent::Kind::Move, {400, 400});
    EXPECT_EQ(m_camp->rect().topLeft(), QPoint(40, 60));
}

TEST_F(PreviewTest, typing_goes_on_in_the_text_that_was_loaded)
{
    read("{\"root\":{\"id\":1},\"dialogs\":[],\"controls\":[\n"
         "{\"id\":9,\"type\":6,\"dialog\":1,\"text\":\"Player\",\"max_length\":8}\n]}");
    auto* box = static_cast<CDXUTEditBox*>(core().find_control(9));
    EXPECT_EQ(box->editor().text(), u"Player"_s) << "what is drawn";
    m_scene.play(true);
    click(box->screen_rect().center());
    m_world.mouse_tool()->key(Qt::Key_End, {});
    EXPECT_TRUE(box->text_typed(u" one"_s, {}));
    EXPECT_EQ(box->text(), u"Player o"_s);
}

TEST_F(PreviewTest, edits_before_it_can_be_undone_after_it)
{
    const QByteArray before = text();
    act([&] { m_camp->SetLocation(300, 300); });
    m_fire->SetChecked(false); // outside an action: its step is still open
    m_scene.play(true);
    click(m_fire->screen_rect().center());
    m_camp->SetLocation(1, 1);
    m_scene.play(false);
    EXPECT_FALSE(m_fire->GetChecked());
    EXPECT_TRUE(m_scene.journal().undo());
    EXPECT_TRUE(m_fire->GetChecked());
    EXPECT_TRUE(m_scene.journal().undo());
    EXPECT_TRUE(same_text(text(), before));
}

TEST_F(PreviewTest, what_is_undone_while_it_runs_shows_but_where_the_preview_wrote)
{
    act([&] { m_camp->SetLocation(300, 300); });
    m_scene.play(true);
    {
        const ShownWrites writes(m_world.document());
        m_camp->set_name(u"shown"_s);
    }
    m_scene.journal().undo();
    EXPECT_EQ(m_camp->rect().topLeft(), QPoint(40, 60));
    EXPECT_EQ(m_camp->name(), u"shown"_s);
    m_scene.play(false);
    EXPECT_EQ(m_camp->name(), u"Camp"_s);
}

TEST_F(PreviewTest, nothing_is_imported_merged_or_cleaned_up_while_it_runs)
{
    const QString function = CEventManager::new_function_name(m_fire->id(), EVENT_CHECKBOX_CLICKED);
    ASSERT_TRUE(m_scene.functions().set_function(function, u"return 1"_s).ok());
    m_scene.events().CreateEventW(m_fire->id(), EVENT_CHECKBOX_CLICKED, function);
    const QString other = path(u"other.tarn"_s);
    ASSERT_TRUE(save(other).ok());
    const QByteArray authored = text();
    m_scene.play(true);
    {
        const ShownWrites writes(m_world.document());
        core().remove_control(m_fire);
    }
    m_scene.remove_deletectrl_GUI_scripts();
    CPakFile package;
    ASSERT_TRUE(package.open(other).ok());
    EXPECT_FALSE(m_scene.load(package, CTexPathInfo(other, 1)).ok());
    EXPECT_FALSE(m_scene.on_merge_GUI(other, u"merged"_s, true).ok());
    m_scene.play(false);
    EXPECT_TRUE(same_text(text(), authored));
}

TEST_F(PreviewTest, a_tool_that_was_armed_is_put_away)
{
    m_scene.SetMTFunction(1, 0);
    m_scene.play(true);
    m_scene.SetMTFunction(2, DXUT_CONTROL_BUTTON);
    const auto controls = core().controls().size();
    click({600, 600});
    EXPECT_EQ(core().controls().size(), controls);
    m_scene.play(false);
    EXPECT_EQ(m_scene.mouse_function(), 0);
}

TEST_F(PreviewTest, raising_a_dialog_is_shown_and_no_part_of_the_scene)
{
    CDXUTDialog* above = dialog({60, 80, 300, 200});
    const QList<CDXUTDialog*> layers = core().GetDialogs();
    ASSERT_TRUE(m_scene.functions().set_function(u"raise"_s, u"(...):raise()"_s).ok());
    const QByteArray authored = text();
    m_scene.play(true);
    click({45, 65});
    EXPECT_EQ(core().GetDialogs().last(), m_camp);
    EXPECT_EQ(core().active_dialog(), m_camp);
    EXPECT_TRUE(same_text(text(), authored));
    {
        const ShownWrites writes(m_world.document());
        const std::array<ScriptValue, 1> arguments{above->shared_from_this()};
        EXPECT_FALSE(m_world.scripts().call(u"raise"_s, arguments, above->shared_from_this()).error);
    }
    EXPECT_EQ(core().GetDialogs().last(), above);
    EXPECT_EQ(core().active_dialog(), above);
    m_scene.play(false);
    EXPECT_EQ(core().GetDialogs(), layers);
    EXPECT_TRUE(same_text(text(), authored));
}

TEST_F(PreviewTest, the_captions_and_all_else_that_the_mouse_changes_are_drawn_anew)
{
    dialog({60, 80, 300, 200});
    CDXUTDialog* bottom = dialog({500, 300, 200, 100});
    (void)bottom->set_property(*bottom->fields().find("minimize_button"), true);
    (void)bottom->set_property(*bottom->fields().find("minimize_to_bottom"), true);
    m_scene.play(true);
    core().take_damage();
    QImage view = picture();
    GuiPainter painter;
    const auto expect_up_to_date = [&](const char* after) {
        const QRect damage = core().take_damage().toAlignedRect();
        {
            QPainter on_view(&view);
            on_view.setClipRect(damage);
            on_view.fillRect(view.rect(), Qt::black);
            painter.paint(on_view, core(), damage, 1);
        }
        EXPECT_TRUE(view == picture()) << after;
    };
    click({45, 65});
    expect_up_to_date("a dialog was raised");
    m_world.mouse_tool()->key(Qt::Key_Tab, {});
    expect_up_to_date("Tab");
    const auto minimize = CDXUTDialog::CaptionButton::Minimize;
    mouse(MouseEvent::Kind::Press, bottom->caption_button_rect(minimize).center());
    expect_up_to_date("the press of a caption's button");
    mouse(MouseEvent::Kind::Release, bottom->caption_button_rect(minimize).center());
    expect_up_to_date("minimising");
    click(bottom->caption_button_rect(minimize).center());
    EXPECT_FALSE(bottom->minimized());
    expect_up_to_date("restoring");
    click(bottom->caption_button_rect(CDXUTDialog::CaptionButton::Close).center());
    expect_up_to_date("closing");
}
