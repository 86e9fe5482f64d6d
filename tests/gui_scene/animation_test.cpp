// Timebars in the scene: what they animate, play, save and merge.

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "gui_core/dxut_control.h"
#include "script/script_runtime.h"
#include "support/scene_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class SceneAnimation : public SceneTest {
protected:
    CAnimationScene& animation() { return m_scene.animation(); }
    /// A dialog slides from 100 to 300 in two seconds.
    void SetUp() override
    {
        VLCMsgIniW::set_language(Language::English);
        m_dialog = dialog({100, 50, 200, 100}, u"Inventory"_s);
        m_bar = animation().create_bar(2, u"Intro"_s);
        animation().set_editing(true);
        EXPECT_EQ(m_bar->record_selection({m_dialog}), 3) << "dialogs have a place, a size, and can be hidden";
        m_bar->set_current_time(2);
        animation().set_unrecorded(m_dialog->id(), Channel::Position, KeyValue::vec(300, 50, 0));
        EXPECT_EQ(m_bar->record_selection({m_dialog}), 1);
    }
    QString log()
    {
        QStringList lines;
        for (const ScriptLogEntry& entry : m_world.script_log().entries())
            lines << (entry.function.isEmpty() ? entry.event : entry.function + u'=' + entry.text);
        return lines.join(u'|');
    }

    CDXUTDialog* m_dialog = nullptr;
    CTimebar* m_bar = nullptr;
};

} // namespace

TEST_F(SceneAnimation, a_bar_plays_in_a_preview_and_leaves_the_scene_as_it_was_authored)
{
    m_bar->set_current_time(1);
    EXPECT_EQ(m_dialog->rect().x(), 200);
    ASSERT_TRUE(m_scene.functions().set_function(u"half"_s, u"local bar, what, t = ...; return bar.name..what..t"_s));
    const QByteArray before = text();
    m_bar->set_auto_play(true);
    m_bar->insert_script_key(1.5f, u"half"_s);
    m_scene.play(true);
    m_scene.advance(0.5);
    EXPECT_EQ(m_dialog->rect().x(), 150);
    m_scene.advance(1.75);
    EXPECT_EQ(m_dialog->rect().x(), 275);
    EXPECT_EQ(log(), u"half=IntroScriptKey1.5"_s);
    m_scene.advance(10);
    EXPECT_EQ(m_dialog->rect().x(), 300);
    EXPECT_TRUE(log().endsWith(u"|Timebar Ended"_s));
    m_scene.play(false);
    animation().set_editing(false);
    EXPECT_EQ(m_dialog->rect().x(), 100);
    m_scene.journal().undo();
    m_scene.journal().undo();
    EXPECT_TRUE(same_text(text(), before));
}

TEST_F(SceneAnimation, scripts_play_stop_and_seek_bars)
{
    const auto run = [&](const QString& source) {
        EXPECT_TRUE(m_scene.functions().set_function(u"run"_s, source));
        const ScriptResult result = m_world.scripts().call(u"run"_s);
        EXPECT_TRUE(result.ok()) << result.error->text().toStdString();
    };
    m_scene.play(true);
    run(u"timebar('Intro'):play() timebar('Intro'):speed(2)"_s);
    m_scene.advance(0.5);
    EXPECT_EQ(m_dialog->rect().x(), 200);
    run(u"timebar('Intro'):stop()"_s);
    m_scene.advance(1);
    EXPECT_EQ(m_dialog->rect().x(), 200);
    {
        const ShownWrites shown(m_scene.document());
        run(u"timebar('Intro'):seek(0/0) timebar('Intro'):seek(1.5) assert(timebar('Intro').current_time == 1.5)"_s);
    }
    EXPECT_EQ(m_dialog->rect().x(), 250);
    run(u"assert(not timebar('nothing'))"_s);
    m_scene.play(false);
}

TEST_F(SceneAnimation, script_keys_are_told_but_not_run_while_the_author_plays)
{
    m_bar->insert_script_key(0, u"missing"_s);
    m_bar->set_current_time(0);
    m_bar->active_bar(1);
    m_bar->frame_move(0.5f);
    EXPECT_EQ(log(), u"missing=not run while editing; there is no such function"_s);
}

TEST_F(SceneAnimation, timebars_are_saved_merged_and_exported_with_what_they_animate)
{
    CTimebar* other = animation().create_bar(5, u"Other"_s);
    other->insert_script_key(1);
    CDXUTControl* button = control(0, core().GetRootDialog(), QRectF(5, 5, 50, 20));
    EXPECT_EQ(other->record_selection({button}), 4);
    animation().set_editing(false);
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    const QByteArray before = text();
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_TRUE(same_text(text(), before));
    const quint32 old_target = animation().bars()[0]->objects()[0]->target().id;
    ASSERT_TRUE(m_scene.on_merge_GUI(path(), u"Merged"_s, false).ok());
    ASSERT_EQ(animation().bars().size(), 4u) << "new ones stand below";
    const CTimerObject* merged = animation().bars()[2]->objects()[0];
    EXPECT_NE(merged->target().id, old_target);
    EXPECT_EQ(merged->name(), u"Inventory"_s);
    EXPECT_FALSE(merged->is_broken());

    m_scene.journal().undo();
    core().EnableGui(true);
    core().SelectDialog(core().GetDialogs().front(), false);
    CSaveOpt selected;
    selected.selection_only = true;
    ASSERT_TRUE(m_scene.export_to(path(u"part.tarn"_s), selected).ok());
    ASSERT_TRUE(m_scene.open_scene(path(u"part.tarn"_s)).ok());
    ASSERT_EQ(animation().bars().size(), 1u);
    EXPECT_EQ(animation().bars()[0]->name(), u"Intro"_s);
    EXPECT_EQ(animation().bars()[0]->objects()[0]->name(), u"Inventory"_s);
}

TEST_F(SceneAnimation, broken_targets_and_missing_functions_are_problems)
{
    const auto count = [&] { return m_scene.model().problems().size(); };
    const std::size_t before = count();
    m_bar->insert_script_key(1, u"missing"_s);
    EXPECT_EQ(count(), before + 1);
    m_scene.RemoveDialog(m_dialog);
    EXPECT_EQ(count(), before + 2);
    m_scene.journal().undo();
    EXPECT_EQ(count(), before + 1);
}

TEST_F(SceneAnimation, a_script_object_calls_functions_verbs_and_methods_with_its_variables)
{
    CDXUTControl* label = control(DXUT_CONTROL_STATIC, core().GetRootDialog(), QRectF(5, 5, 50, 20));
    ASSERT_TRUE(label->set_property(*label->fields().find("name"), u"Label"_s));
    ASSERT_TRUE(m_scene.functions().set_function(
        u"show"_s,
        u"local life, place = ... return life .. '/' .. place[2] .. '/' .. timebar('Intro'):value('life')"_s));
    CTCommandScript* command = m_bar->create_script_object();
    command->create_var(VarType::Int, u"life"_s)->set_key_value(0, KeyValue::whole(3));
    command->create_var(VarType::Vec, u"place"_s)->set_key_value(0, KeyValue::vec(1, 2, 3));
    m_bar->set_auto_play(true);
    const auto run = [&](const QString& line) {
        command->set_script(line);
        m_scene.play(true);
        m_scene.advance(0.1);
        const QString text = std::get<QString>(label->property(*label->fields().find("text")));
        const QString told = log();
        m_scene.play(false);
        return text + u';' + told;
    };
    EXPECT_EQ(run(u"control(\"Label\"):set('text', 'life ' .. life)"_s), u"life 3;"_s);
    EXPECT_EQ(run(u"control(\"Label\"):set('text', call('show', life, place))"_s), u"3/2.0/3;"_s);
    EXPECT_FALSE(run(u"show(life, place)"_s).contains(u"no script function"_s));
    EXPECT_TRUE(run(u"nothing(life)"_s).contains(u"there is no script function named \"nothing\""_s));
    EXPECT_TRUE(run(u"show(life"_s).contains(u"show"_s));
}
