// Menus of a scene: bound, run, exported and broken.

#include "core/language.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "gui_core/open_menu.h"
#include "gui_draw/gui_painter.h"
#include "script/script_log.h"
#include "script/script_runtime.h"
#include "support/gui_fixture.h"
#include "support/scene_fixture.h"

#include <QPainter>

using namespace tarn;
using namespace tarn::test;

namespace {

class SceneMenus : public SceneTest {
protected:
    SceneMenus()
    {
        VLCMsgIniW::set_language(Language::English);
        m_home = dialog({100, 100, 400, 300}, u"Home"_s);
        m_button = control(DXUT_CONTROL_BUTTON, m_home, {20, 20, 100, 30}, u"Open"_s);
        m_menu = core().create_menu(u"Pause"_s);
        for (const QString& text : {u"Resume"_s, u"Hard"_s})
            core().create_menu_item(*m_menu, int(m_menu->items().size()), {.text = text});
        m_resume = m_menu->items().front();
        (void)set(*m_menu->items().back(), "checkable", true);
    }
    void define(const QString& name, const QString& text)
    {
        ASSERT_TRUE(m_scene.functions().set_function(name, text).ok());
    }
    void mouse(MouseEvent::Kind kind, QPointF place, Qt::MouseButton button)
    {
        m_world.mouse_tool()->mouse({kind, place, button, {}});
    }
    void click(QPointF place, Qt::MouseButton button = Qt::LeftButton)
    {
        mouse(MouseEvent::Kind::Move, place, Qt::NoButton);
        mouse(MouseEvent::Kind::Press, place, button);
        mouse(MouseEvent::Kind::Release, place, button);
    }
    void choose(int row) { click(core().open_menu()->panels().back().row_area(row).center()); }
    QStringList log()
    {
        QStringList lines;
        for (const ScriptLogEntry& entry : m_world.script_log().entries())
            lines.append(entry.object + u" "_s + entry.event + u": "_s + entry.text);
        m_world.script_log().clear();
        return lines;
    }
    QImage picture()
    {
        QImage image(core().screen_size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        QPainter painter(&image);
        GuiPainter().paint(painter, core(), image.rect(), 1);
        return image;
    }

    CDXUTDialog* m_home;
    CDXUTControl* m_button;
    CDXUTMenu* m_menu;
    CDXUTMenuItem* m_resume;
};

} // namespace

TEST_F(SceneMenus, a_click_runs_its_script_before_the_menu_opens_and_an_item_runs_its_own)
{
    define(u"prepare"_s, u"menu('Pause'):item('Resume').text = 'Go on' return 'prepared'"_s);
    m_scene.events().CreateEventW(m_button->id(), EVENT_BUTTON_CLICKED, u"prepare"_s);
    define(u"chosen"_s, u"local i, e, v, o = ... return i.text .. ' ' .. e .. ' ' .. tostring(v) .. ' ' .. o.name"_s);
    for (CDXUTMenuItem* item : m_menu->items())
        (void)item->set_function(u"chosen"_s);
    (void)set(*m_button, "click_menu", ObjectRef{m_menu->id()});
    const QByteArray authored = text();
    m_scene.play(true);
    const QImage closed = picture();
    click(m_button->screen_rect().center());
    ASSERT_TRUE(core().open_menu());
    EXPECT_EQ(m_resume->item_state().text, u"Go on"_s);
    EXPECT_NE(picture(), closed) << "it is drawn";
    choose(0);
    EXPECT_FALSE(core().open_menu());
    EXPECT_EQ(log(), (QStringList{u"Open Click: prepared"_s, u"Go on Item Chosen: Go on MenuItem nil Open"_s}));
    click(m_button->screen_rect().center());
    choose(1);
    EXPECT_EQ(log().last(), u"Hard Item Chosen: Hard MenuItem true Open"_s);
    EXPECT_TRUE(same_text(text(), authored)) << "nothing of that is saved";
    m_scene.play(false);
    EXPECT_EQ(m_resume->item_state().text, u"Resume"_s);
}

TEST_F(SceneMenus, no_menu_opens_for_what_its_own_script_hid_or_removed)
{
    (void)set(*m_button, "click_menu", ObjectRef{m_menu->id()});
    for (const char16_t* script : {u"dialog('Home'):hide()", u"control('Open'):remove()"}) {
        define(u"away"_s, QString::fromUtf16(script));
        m_scene.events().CreateEventW(m_button->id(), EVENT_BUTTON_CLICKED, u"away"_s);
        m_scene.play(true);
        click(m_button->screen_rect().center());
        EXPECT_FALSE(core().open_menu());
        m_scene.play(false);
    }
}

TEST_F(SceneMenus, the_right_button_opens_menus_only_while_the_interface_runs)
{
    (void)set(*m_home, "right_click_menu", ObjectRef{m_menu->id()});
    click({300, 300}, Qt::RightButton);
    EXPECT_FALSE(core().open_menu());
    m_scene.play(true);
    click({300, 300}, Qt::RightButton);
    ASSERT_TRUE(core().open_menu());
    m_scene.play(false);
    EXPECT_FALSE(core().open_menu()) << "the preview's end closes it";
}

TEST_F(SceneMenus, exported_dialogs_take_along_the_menus_that_they_open)
{
    CDXUTMenu* other = core().create_menu(u"Other"_s);
    core().create_menu_item(*other, 0, {.text = u"x"_s});
    (void)set(*m_button, "right_click_menu", ObjectRef{m_menu->id()});
    core().SelectDialog(m_home, false);
    CSaveOpt selected;
    selected.selection_only = true;
    ASSERT_TRUE(save(path(), selected).ok());
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    ASSERT_EQ(core().GetMenus().size(), 1);
    EXPECT_EQ(core().GetMenus().front()->name(), u"Pause"_s);
    EXPECT_EQ(core().GetMenus().front()->items().size(), 2);
}

TEST_F(SceneMenus, a_merged_item_calls_its_function_under_the_name_that_it_got)
{
    define(u"go"_s, u"return 'theirs'"_s);
    (void)m_resume->set_function(u"go"_s);
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    m_scene.new_scene();
    define(u"go"_s, u"return 'ours'"_s);
    ASSERT_TRUE(m_scene.on_merge_GUI(path(), u"Merged"_s, false).ok());
    const QString name = core().GetMenus().front()->items().front()->item_state().function;
    ASSERT_NE(name, u"go"_s);
    EXPECT_EQ(m_scene.functions().find_function(name)->text(), u"return 'theirs'"_s);
}

TEST_F(SceneMenus, what_a_removed_menu_or_function_leaves_behind_is_told)
{
    (void)set(*m_button, "click_menu", ObjectRef{m_menu->id()});
    (void)m_resume->set_function(u"gone"_s);
    auto problems = m_scene.model().problems();
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_TRUE(problems[0].object == m_resume && problems[0].place == u"Resume"_s
                && problems[0].text.contains(u"gone"_s));
    m_scene.RemoveMenu(m_menu);
    problems = m_scene.model().problems();
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_TRUE(problems[0].object == m_button && problems[0].text.contains(u"click_menu"_s));
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(m_scene.model().problems().size(), 1u);
}

TEST_F(SceneMenus, pictures_of_removed_items_leave_the_scene_and_come_back)
{
    core().set_texture(u"icon.png"_s, png(Qt::red));
    (void)set(*m_resume, "icon", u"icon.png"_s);
    m_scene.RemoveMenuItem(m_resume);
    EXPECT_TRUE(core().texture_names().isEmpty());
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(core().texture_names(), QStringList{u"icon.png"_s});
    m_scene.RemoveMenu(m_menu);
    EXPECT_TRUE(core().texture_names().isEmpty());
}

TEST_F(SceneMenus, a_file_cannot_make_items_of_nobody)
{
    const QByteArray head = "{\"menus\":[{\"id\":5}],\"menu_items\":[{\"id\":6,\"menu\":";
    for (const char* owner : {"6", "1", "99", "0"}) {
        const auto content = read_content("{\"format\":1}", {{u"scene.json"_s, head + owner + "}]}"}}, {}, core());
        EXPECT_FALSE(content.ok()) << owner;
    }
    read(head + "5,\"level\":99,\"text\":\"t\"}]}");
    EXPECT_EQ(core().GetMenus().front()->levels(), std::vector{0});
}
