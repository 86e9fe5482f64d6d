#include "support/attributes.h"
// Timebars in the scene: what they animate, play, save and merge.

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "gui_core/anchor.h"
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
        EXPECT_EQ(m_bar->record_selection({m_dialog}), 5) << "dialogs do not turn";
        m_bar->set_current_time(2);
        ASSERT_TRUE(set(*m_dialog, "x", qint64(300)));
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
    ASSERT_TRUE(set(*m_bar, "auto_play", true));
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
    EXPECT_EQ(log(),
              u"missing=not run while editing; there is no such function; "
              "it would be called with: Intro, \"ScriptKey\", 0"_s);
}

TEST_F(SceneAnimation, timebars_are_saved_merged_and_exported_with_what_they_animate)
{
    CTimebar* other = animation().create_bar(5, u"Other"_s);
    other->insert_script_key(1);
    CDXUTControl* button = control(0, core().GetRootDialog(), QRectF(5, 5, 50, 20));
    EXPECT_EQ(other->record_selection({button}), 6);
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

TEST_F(SceneAnimation, a_driven_place_that_is_edited_counts_from_the_screen_it_was_laid_out_for)
{
    CDXUTDialog* corner = dialog({1000, 500, 200, 100});
    CDXUTControl* button = control(0, core().GetRootDialog(), QRectF(1200, 10, 60, 20));
    CDXUTControl* scaled = control(0, core().GetRootDialog(), QRectF(100, 10, 60, 20));
    corner->set_align_type(anchor_bottom_right);
    button->set_align_type(anchor_right);
    scaled->set_align_type(anchor_scale);
    m_bar->set_current_time(0);
    m_bar->record_selection({corner, button, scaled});
    animation().set_editing(false);
    const QByteArray before = text();
    core().set_screen_size({1600, 900});
    animation().set_editing(true);
    m_bar->set_current_time(1);
    ASSERT_EQ(button->rect(), QRectF(1520, 100, 60, 20));

    button->SetLocation(1400, 100);
    scaled->SetSize(100, 25);
    corner->SetLocation(1210, 650);
    EXPECT_EQ(button->rect(), QRectF(1400, 100, 60, 20));
    EXPECT_EQ(scaled->rect(), QRectF(125, 12.5, 100, 25));
    EXPECT_EQ(corner->rect(), QRect(1210, 650, 200, 100));
    EXPECT_EQ(animation().unrecorded().value(scaled->id()).channels(), bit(Channel::Scale));
    EXPECT_EQ(animation().unrecorded().value(button->id()).value(Channel::Position), KeyValue::vec(1080, 10, 0));
    EXPECT_EQ(animation().unrecorded().value(corner->id()).value(Channel::Position), KeyValue::vec(890, 470, 0));
    core().set_screen_size({1280, 720});
    EXPECT_EQ(button->rect().topLeft(), QPointF(1080, 10));
    EXPECT_EQ(corner->rect().topLeft(), QPoint(890, 470));
    animation().set_editing(false);
    EXPECT_TRUE(same_text(text(), before));
}

TEST_F(SceneAnimation, an_anchor_is_authored_while_the_place_is_driven)
{
    CDXUTControl* button = control(0, core().GetRootDialog(), QRectF(1200, 10, 60, 20));
    m_bar->set_current_time(0);
    m_bar->record_selection({button});
    m_bar->set_current_time(1);
    button->SetLocation(300, 10);
    button->set_align_type(anchor_right);
    EXPECT_EQ(button->rect().x(), 300);
    button->set_scale_mode(1);
    EXPECT_EQ(button->rect().x(), 300);
    button->set_center({5, 5});
    EXPECT_TRUE(button->has_own_center()) << "the centre is no channel";
    animation().set_editing(false);
    EXPECT_EQ(button->rect().x(), 1200);
    EXPECT_EQ(button->scale_mode(), 1);
    EXPECT_EQ(button->center(), QPointF(5, 5));
    button->set_scale_mode(0);
    EXPECT_EQ(button->align_type(), anchor_right);
}

TEST_F(SceneAnimation, children_of_a_driven_dialog_come_and_go_as_ever)
{
    m_bar->set_current_time(1);
    m_dialog->SetLocation(7, 8);
    CDXUTControl* button = control(0, m_dialog, QRectF(5, 5, 50, 20));
    ASSERT_EQ(m_dialog->controls().size(), 1);
    EXPECT_EQ(m_dialog->rect().topLeft(), QPoint(7, 8));
    core().move_control_to(button, core().GetRootDialog());
    EXPECT_EQ(m_dialog->controls().size(), 0);
    m_scene.journal().undo();
    m_scene.document().changes().tell();
    EXPECT_EQ(m_dialog->rect().x(), 200) << "all of it was one step that nobody named";
    animation().set_editing(false);
    EXPECT_EQ(m_dialog->rect().x(), 100);
}

TEST_F(SceneAnimation, dialogs_and_controls_fade_and_take_on_colours)
{
    CDXUTControl* button = control(0, m_dialog, QRectF(5, 5, 50, 20));
    m_bar->set_current_time(0);
    m_bar->record_selection({button});
    m_bar->set_current_time(2);
    for (ModelObject* each : {static_cast<ModelObject*>(button), static_cast<ModelObject*>(m_dialog)}) {
        EXPECT_TRUE(each->set_property(*each->fields().find("transparency"), 1.0));
        EXPECT_TRUE(each->set_property(*each->fields().find("color"), qint64(0xff00ff00)));
    }
    EXPECT_EQ(m_bar->record_selection({button, m_dialog}), 4);
    m_bar->set_current_time(1);
    EXPECT_EQ(button->transparency(), 0.5f);
    EXPECT_EQ(m_dialog->dialog_state().transparency, 0.5f);
    EXPECT_EQ(button->color(), 0xff80ff80u);
    EXPECT_TRUE(m_dialog->is_seen());
    m_bar->set_current_time(2);
    EXPECT_FALSE(button->is_seen());
    EXPECT_FALSE(m_dialog->is_seen());
    m_scene.play(true);
    EXPECT_TRUE(m_dialog->is_seen()) << "nothing plays";
    m_scene.play(false);
    EXPECT_FALSE(m_dialog->is_seen()) << "the time of the editor is back";
    animation().set_editing(false);
    EXPECT_EQ(button->color(), 0xffffffffu);
    EXPECT_FALSE(button->has_extras());
}

TEST_F(SceneAnimation, a_bar_that_comes_to_its_end_calls_its_function_in_a_preview)
{
    ASSERT_TRUE(m_scene.functions().set_function(u"next"_s, u"local bar, what = ...; return bar.name..what"_s));
    ASSERT_TRUE(set(*m_bar, "end_function", u"next"_s));
    ASSERT_TRUE(set(*m_bar, "auto_play", true));
    m_scene.play(true);
    m_scene.advance(1.9);
    EXPECT_FALSE(log().contains(u"next"_s));
    m_scene.advance(5);
    EXPECT_EQ(log(), u"next=IntroEnded"_s);
    m_scene.play(false);
    m_bar->active_bar(1, 1);
    m_bar->frame_move(5);
    EXPECT_EQ(log(), u"next=IntroEnded|next=not run while editing; it would be called with: Intro, \"Ended\""_s);
    const std::size_t problems = m_scene.model().problems().size();
    ASSERT_TRUE(set(*m_bar, "end_function", u"missing"_s));
    EXPECT_EQ(m_scene.model().problems().size(), problems + 1);
}

TEST_F(SceneAnimation, script_keys_and_their_functions_stay_together_when_scenes_merge)
{
    CScriptKey* key = m_bar->insert_script_key(1);
    const QString name = key->function();
    ASSERT_TRUE(m_scene.functions().set_function(name, u"return 'first'"_s));
    ASSERT_TRUE(set(*m_bar, "end_function", name));
    animation().set_editing(false);
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    ASSERT_TRUE(m_scene.functions().set_function(name, u"return 'second'"_s));
    ASSERT_TRUE(m_scene.on_merge_GUI(path(), u"Merged"_s, false).ok());
    ASSERT_EQ(animation().bars().size(), 2u);
    CTimebar* merged = animation().bars()[1];
    const QString merged_name = merged->get_script_name(1);
    EXPECT_NE(merged_name, name);
    EXPECT_EQ(merged->end_function(), merged_name);
    EXPECT_EQ(animation().bars()[0]->get_script_name(1), name);
    const auto call = [&](const QString& function) { return m_world.scripts().call(function).value; };
    EXPECT_EQ(call(name), Value(u"second"_s));
    EXPECT_EQ(call(merged_name), Value(u"first"_s));
    CScriptKey* added = merged->insert_script_key(2);
    EXPECT_NE(added->function(), name);
    EXPECT_NE(added->function(), merged_name);
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
    ASSERT_TRUE(set(*m_bar, "auto_play", true));
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
