// What scripts reach in an interface: the guide's examples run, and its tables name all there is.

#include "core/language.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "gui_core/open_menu.h"
#include "script/script_runtime.h"
#include "support/scene_fixture.h"

#include <QRegularExpression>

#include <array>

using namespace tarn;
using namespace tarn::test;

namespace {

class ScriptingTest : public SceneTest {
protected:
    ScriptingTest()
    {
        VLCMsgIniW::set_language(Language::English);
        m_settings = dialog({10, 10, 400, 300}, u"Settings"_s);
        const std::pair<int, const char16_t*> rows[] = {
            {DXUT_CONTROL_BUTTON, u"Start"},  {DXUT_CONTROL_CHECKBOX, u"Hard"},   {DXUT_CONTROL_EDITBOX, u"Player"},
            {DXUT_CONTROL_STATIC, u"Status"}, {DXUT_CONTROL_PROGRESS, u"Health"}, {DXUT_CONTROL_LISTBOX, u"Saves"},
            {DXUT_CONTROL_INFOBOX, u"Log"}};
        for (const auto& [type, name] : rows)
            control(type, m_settings, {0, 0, 50, 20}, QString::fromUtf16(name));
        CDXUTMenu* menu = core().create_menu(u"Pause"_s);
        core().create_menu_item(*menu, 0, {.text = u"Hard"_s});
        core().EnableGui(false);
        define(u"Greet"_s, u"print('hello', ...)"_s);
    }
    void define(const QString& name, const QString& text)
    {
        ASSERT_TRUE(m_scene.functions().set_function(name, text).ok());
    }
    ScriptResult run(const QString& text)
    {
        define(u"main"_s, text);
        for (CDXUTControl* each : core().controls())
            if (each->name() == u"Start"_s) {
                const std::array<ScriptValue, 3> arguments{each->shared_from_this(), Value(u"Click"_s), Value()};
                return m_world.scripts().call(u"main"_s, arguments, each->shared_from_this());
            }
        return {};
    }
    QString told(const QString& text)
    {
        const ScriptResult result = run(text);
        if (result.error)
            return result.error->message;
        const auto* answer = std::get_if<QString>(&result.value);
        return answer ? *answer : QString();
    }

    CDXUTDialog* m_settings;
};

QString guide()
{
    return QString::fromUtf8(content_of(QStringLiteral(TARN_DOCS "/scripting.md")));
}

} // namespace

TEST_F(ScriptingTest, the_guides_examples_run)
{
    static const QRegularExpression block(u"```lua\n(.*?)```"_s, QRegularExpression::DotMatchesEverythingOption);
    int count = 0;
    for (auto match = block.globalMatch(guide()); match.hasNext(); ++count) {
        const QString example = match.next().captured(1);
        const ScriptResult result = run(example);
        EXPECT_TRUE(result.ok()) << example.toStdString() << result.error->text().toStdString();
    }
    EXPECT_GE(count, 8);
}

TEST_F(ScriptingTest, the_guide_names_every_verb)
{
    const QString text = guide();
    for (const ScriptVerb& verb : m_world.scripts().verbs()) {
        const QString call = (verb.of ? u":"_s : QString()) + QLatin1String(verb.name) + u"("_s;
        EXPECT_TRUE(text.contains(call)) << verb.name;
        EXPECT_FALSE(verb.about.text().isEmpty()) << verb.name;
    }
}

TEST_F(ScriptingTest, objects_are_found_by_name_and_id_as_long_as_they_are_there)
{
    const QString id = QString::number(m_settings->id());
    EXPECT_EQ(told(u"return dialog(%1).name"_s.arg(id)), u"Settings"_s);
    EXPECT_EQ(told(u"return control('Start').dialog.name"_s), u"Settings"_s);
    EXPECT_EQ(told(u"return tostring(control('nobody'))"_s), u"nil"_s);
    CDXUTControl* second = control(DXUT_CONTROL_STATIC, m_settings, {}, u"Status"_s);
    EXPECT_EQ(told(u"return control('Status') == control(%1) and 'second' or 'first'"_s.arg(second->id())), u"first"_s);
    // What a name stood for last is not taken for it once it has another name.
    EXPECT_EQ(told(u"local s = control('Status') s.name = 'Other' return control('Status').text"_s), second->name());
    EXPECT_EQ(told(u"local s = control('Saves') s:remove() return tostring(control('Saves'))"_s), u"nil"_s);
    EXPECT_TRUE(told(u"local s = control('Log') s:remove() s:add_line('x')"_s).contains(u"deleted"_s));
}

TEST_F(ScriptingTest, verbs_do_to_the_scene_what_they_say)
{
    EXPECT_EQ(told(u"dialog('Settings'):minimise() dialog('Settings'):move(33, 44.4)"_s), QString());
    EXPECT_TRUE(m_settings->minimized());
    EXPECT_EQ(m_settings->rect().topLeft(), QPoint(33, 44));
    EXPECT_EQ(told(u"dialog('Settings'):close()"_s), QString());
    EXPECT_FALSE(m_settings->GetVisible());
    EXPECT_EQ(told(u"dialog('Settings'):restore()"_s), QString());
    EXPECT_TRUE(m_settings->GetVisible() && !m_settings->minimized());
    EXPECT_EQ(told(u"control('Player'):focus()"_s), QString());
    ASSERT_TRUE(core().live().focused);
    EXPECT_EQ(core().live().focused->name(), u"Player"_s);
    QStringList messages;
    m_world.on_message = [&](const QString& text, const QString& title) { messages << title + u":"_s + text; };
    EXPECT_EQ(told(u"message('a', 'b') message('c')"_s), QString());
    EXPECT_EQ(messages, (QStringList{u"b:a"_s, u":c"_s}));
}

TEST_F(ScriptingTest, a_name_written_out_that_nothing_has_is_a_problem)
{
    define(u"main"_s,
           u"-- dialog('Remark')\ncontrol('Start'):hide() menu('Pause'):pop()\n"
           "dialog(\"Gone\"):hide() local t = {}\nt.control('x') --[[ object('y')\n]] control( 'Lost' )"_s);
    QStringList told;
    for (const auto& problem : m_scene.model().problems())
        told
            << QStringLiteral("%1:%2 %3").arg(problem.function).arg(problem.line).arg(problem.text.section(u": "_s, 1));
    EXPECT_EQ(told,
              (QStringList{u"main:3 dialog(\"Gone\") finds nothing of that name."_s,
                           u"main:5 control(\"Lost\") finds nothing of that name."_s}))
        << told.join(u'|').toStdString();
}

TEST_F(ScriptingTest, a_number_stands_for_its_text)
{
    const QString ask = u" return control('Status').text"_s;
    EXPECT_EQ(told(u"control('Status').text = 50"_s + ask), u"50"_s);
    EXPECT_EQ(told(u"control('Status').text = 0.5"_s + ask), u"0.5"_s);
    EXPECT_EQ(told(u"control('Status').text = 100 / 2"_s + ask), u"50.0"_s);
    EXPECT_TRUE(told(u"control('Status').text = {}"_s).contains(u"a text is needed"_s));
}

TEST_F(ScriptingTest, menus_open_and_their_items_change)
{
    EXPECT_EQ(told(u"menu('Pause'):pop(30, 40) menu('Pause'):item('Hard').checkable = true"_s), QString());
    ASSERT_TRUE(core().open_menu());
    EXPECT_EQ(core().open_menu()->panels().front().area.topLeft(), QPointF(30, 40));
    EXPECT_EQ(told(u"local m = menu('Pause') m:close() return m:items()[1].menu.name"_s), u"Pause"_s);
    EXPECT_FALSE(core().open_menu());
    EXPECT_EQ(told(u"return tostring(menu('Pause'):item('nothing'))"_s), u"nil"_s);
    EXPECT_TRUE(told(u"menu('Pause'):pop(1e7)"_s).contains(u"range"_s));
    core().EnableGui(true);
    EXPECT_TRUE(told(u"menu('Pause'):pop()"_s).contains(u"runs"_s));
}

TEST_F(ScriptingTest, what_cannot_be_is_an_error_that_says_so)
{
    EXPECT_TRUE(told(u"dialog('Settings'):move(0/0, 1)"_s).contains(u"range"_s));
    EXPECT_TRUE(told(u"dialog(1):remove()"_s).contains(u"root"_s));
    EXPECT_TRUE(told(u"control('Start'):add_line('x')"_s).contains(u"add_line"_s));
    EXPECT_TRUE(told(u"control('Start').colour = 1"_s).contains(u"colour"_s));
    EXPECT_TRUE(told(u"control('Start').id = 1"_s).contains(u"id"_s));
}

TEST_F(ScriptingTest, what_a_tried_script_did_is_taken_back_and_nothing_of_a_running_interface_stays)
{
    const QByteArray before = text();
    auto edit = m_world.begin_edit(u"try"_s);
    const auto steps = m_scene.journal().step_count();
    EXPECT_EQ(told(u"control('Start').text = 'x' control('Hard'):remove() dialog('Settings'):move(5, 5)"_s), QString());
    EXPECT_EQ(told(u"dialog('Settings'):minimise() control('Player'):focus()"_s), QString());
    edit.reset();
    EXPECT_FALSE(m_settings->minimized());
    EXPECT_EQ(core().live().focused, nullptr);
    EXPECT_EQ(m_scene.journal().step_count(), steps);
    m_scene.functions().del_function(u"main"_s);
    EXPECT_TRUE(same_text(text(), before));
}
