// From the mouse to the function: what the running interface raises, and what answers it.

#include "core/language.h"
#include "gui_core/dxut_combo_box.h"
#include "gui_core/dxut_radio_button.h"
#include "gui_core/dxut_slider.h"
#include "gui_core/gui_event.h"
#include "script/script_log.h"
#include "script/script_runtime.h"
#include "support/gui_fixture.h"
#include "support/scene_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class EventsTest : public SceneTest {
protected:
    EventsTest()
    {
        VLCMsgIniW::set_language(Language::English);
        m_home = dialog({100, 100, 400, 400}, u"Home"_s);
        (void)m_home->set_property(*m_home->fields().find("minimize_button"), true);
    }
    CDXUTControl* make(int type, double y, double height = 30)
    {
        return control(type, m_home, {20, y, 200, height}, u"c%1"_s.arg(type));
    }
    /// Ties every event of the control to a function that notes the event and its value.
    void bind_all(const CDXUTControl* to)
    {
        for (const EventKind& kind : event_kinds()) {
            if (!happens_to(kind, to->GetType()))
                continue;
            const QString name = CEventManager::new_function_name(to->id(), kind.type);
            define(name, u"local o, e, v = ... return o.name .. ' ' .. e .. ' ' .. tostring(v)"_s);
            ASSERT_TRUE(m_scene.events().CreateEventW(to->id(), kind.type, name));
        }
    }
    void define(const QString& name, const QString& text)
    {
        ASSERT_TRUE(m_scene.functions().set_function(name, text).ok());
    }
    void bind(const CDXUTControl* to, quint32 type, const QString& text)
    {
        const QString name = CEventManager::new_function_name(to->id(), type);
        define(name, text);
        m_scene.events().CreateEventW(to->id(), type, name);
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
    static QPointF middle(const CDXUTControl* of) { return of->screen_rect().center(); }
    /// What the functions answered since the last time.
    QStringList answers()
    {
        QStringList texts;
        for (const ScriptLogEntry& entry : m_world.script_log().entries())
            texts << entry.text;
        m_world.script_log().clear();
        return texts;
    }

    CDXUTDialog* m_home;
};

} // namespace

TEST_F(EventsTest, a_button_tells_of_the_mouse_in_the_order_in_which_it_comes)
{
    const CDXUTControl* button = make(DXUT_CONTROL_BUTTON, 20);
    const CDXUTControl* other = make(DXUT_CONTROL_BUTTONST, 60);
    bind_all(button);
    bind_all(other);
    m_scene.play(true);
    click(middle(button));
    EXPECT_EQ(answers(),
              (QStringList{u"c0 MouseEnter nil"_s, u"c0 LeftDown nil"_s, u"c0 LeftUp nil"_s, u"c0 Click nil"_s}));
    mouse(MouseEvent::Kind::Press, middle(button));
    mouse(MouseEvent::Kind::Release, middle(other));
    EXPECT_EQ(answers(),
              (QStringList{u"c0 LeftDown nil"_s, u"c0 MouseLeave nil"_s, u"c10 MouseEnter nil"_s, u"c0 LeftUp nil"_s}));
    m_world.mouse_tool()->key(Qt::Key_Space, {});
    EXPECT_EQ(answers(), QStringList{u"c0 Click nil"_s});
}

TEST_F(EventsTest, check_boxes_and_radio_groups_tell_who_changed)
{
    CDXUTControl* check = make(DXUT_CONTROL_CHECKBOX, 20);
    CDXUTControl* first = make(DXUT_CONTROL_RADIOBUTTON, 60);
    CDXUTControl* second = make(DXUT_CONTROL_RADIOBUTTON, 100);
    (void)set(*second, "name", u"second"_s);
    for (const CDXUTControl* each : {check, first, second})
        for (const auto& kind : event_kinds())
            if (kind.value && happens_to(kind, each->GetType()))
                bind(each, kind.type, u"local o, e, v = ... return o.name .. ' ' .. e .. ' ' .. tostring(v)"_s);
    m_scene.play(true);
    click(middle(check));
    click(middle(check));
    EXPECT_EQ(
        answers(),
        (QStringList{u"c2 CheckClick true"_s, u"c2 CheckOn true"_s, u"c2 CheckClick false"_s, u"c2 CheckOff false"_s}));
    click(middle(first));
    EXPECT_EQ(answers(), (QStringList{u"c3 RadioClick true"_s, u"c3 RadioOn true"_s}));
    click(middle(second));
    EXPECT_EQ(answers(), (QStringList{u"second RadioClick true"_s, u"c3 RadioOff false"_s, u"second RadioOn true"_s}));
    click(middle(second));
    EXPECT_EQ(answers(), QStringList{u"second RadioClick true"_s});
}

TEST_F(EventsTest, controls_with_a_value_tell_it_however_it_was_changed)
{
    CDXUTControl* slider = make(DXUT_CONTROL_SLIDER, 20);
    CDXUTControl* bar = make(DXUT_CONTROL_SCROLLBAR, 60);
    CDXUTControl* edit = make(DXUT_CONTROL_EDITBOX, 100);
    for (const CDXUTControl* each : {slider, bar, edit})
        bind_all(each);
    m_scene.play(true);
    click(middle(slider));
    EXPECT_EQ(answers(), QStringList()) << "it stands there already";
    m_world.mouse_tool()->key(Qt::Key_Right, {});
    m_world.mouse_tool()->key(Qt::Key_End, {});
    m_world.mouse_tool()->key(Qt::Key_End, {});
    EXPECT_EQ(answers(), (QStringList{u"c5 SliderDrag 51"_s, u"c5 SliderDrag 100"_s}));
    m_world.mouse_tool()->wheel(middle(bar), -1);
    EXPECT_EQ(answers(), QStringList{u"c9 ScrollChanged 3"_s});
    click(middle(edit));
    m_world.mouse_tool()->text(u"灯塔"_s, {});
    EXPECT_EQ(answers(), QStringList());
    m_world.mouse_tool()->key(Qt::Key_Return, {});
    EXPECT_EQ(answers(), QStringList{u"c6 EditEnter c6灯塔"_s});
}

TEST_F(EventsTest, lists_tell_the_entry_and_the_double_click)
{
    auto* list = static_cast<CDXUTItems*>(make(DXUT_CONTROL_LISTBOX, 20, 120));
    auto* combo = static_cast<CDXUTComboBox*>(make(DXUT_CONTROL_COMBOBOX, 160));
    for (CDXUTItems* each : {list, static_cast<CDXUTItems*>(combo)}) {
        for (const char16_t* item : {u"a", u"b", u"c"})
            each->AddItem(QString::fromUtf16(item));
        bind_all(each);
    }
    m_scene.play(true);
    const QPointF row = list->screen_rect().topLeft() + QPointF(20, 30);
    click(row);
    mouse(MouseEvent::Kind::DoubleClick, row);
    mouse(MouseEvent::Kind::Release, row);
    EXPECT_EQ(answers(), (QStringList{u"c8 ListClick 1"_s, u"c8 ListClick 1"_s, u"c8 ListDoubleClick 1"_s}));
    click(middle(combo));
    const QRectF popup = combo->popup_rect();
    click(m_home->to_screen(popup).topLeft() + QPointF(20, 50));
    EXPECT_EQ(answers(), QStringList{u"c4 ComboSelectionChanged 2"_s});
    m_world.mouse_tool()->key(Qt::Key_Down, {});
    EXPECT_EQ(answers(), QStringList()) << "the end of the list";
    m_world.mouse_tool()->key(Qt::Key_Up, {});
    EXPECT_EQ(answers(), QStringList{u"c4 ComboSelectionChanged 1"_s});
}

TEST_F(EventsTest, dialogs_run_their_own_functions)
{
    using Button = CDXUTDialog::CaptionButton;
    for (const EventKind& kind : event_kinds())
        if (kind.control_types == 0)
            define(m_home->get_func_str(kind.type), u"local d, e = ... return d.name .. ' ' .. e"_s);
    m_scene.play(true);
    click(m_home->caption_button_rect(Button::Minimize).center());
    click(m_home->caption_button_rect(Button::Minimize).center());
    EXPECT_EQ(answers(), (QStringList{u"Home Minimize"_s, u"Home Restore"_s}));
    mouse(MouseEvent::Kind::Press, {150, 110});
    mouse(MouseEvent::Kind::Move, {160, 110});
    mouse(MouseEvent::Kind::Move, {160, 110});
    mouse(MouseEvent::Kind::Release, {160, 110});
    EXPECT_EQ(answers(), QStringList{u"Home Move"_s});
    click(m_home->caption_button_rect(Button::Close).center());
    EXPECT_EQ(answers(), QStringList{u"Home Close"_s});
    EXPECT_FALSE(m_home->GetVisible());
}

TEST_F(EventsTest, functions_may_remove_what_called_them_and_the_rest_goes_on)
{
    CDXUTControl* button = make(DXUT_CONTROL_BUTTON, 20);
    CDXUTControl* other = make(DXUT_CONTROL_BUTTONST, 60);
    bind(button, EVENT_BUTTON_LEFT_DOWN, u"local b = ... b:remove() wait(0.1) print('never')"_s);
    bind(button, EVENT_BUTTON_LEFT_UP, u"return 'removed already'"_s);
    bind(other, EVENT_BUTTON_CLICKED, u"dialog('Home'):remove() error('after that')"_s);
    const QByteArray authored = text();
    m_scene.play(true);
    click(middle(button));
    m_scene.advance(1);
    EXPECT_EQ(answers(), QStringList{u"stopped"_s});
    EXPECT_EQ(core().live().hovered, nullptr);
    const QPointF place = middle(other);
    click(place);
    click(place);
    ASSERT_EQ(m_world.script_log().entries().size(), 1u);
    const ScriptLogEntry& error = m_world.script_log().entries().front();
    EXPECT_EQ(error.kind, ScriptLogEntry::Kind::Error);
    EXPECT_EQ(error.line, 1);
    EXPECT_TRUE(error.text.contains(u"after that"_s));
    m_scene.play(false);
    EXPECT_TRUE(same_text(text(), authored));
}

TEST_F(EventsTest, functions_wait_by_the_scenes_clock_and_not_beyond_the_preview)
{
    CDXUTControl* button = make(DXUT_CONTROL_BUTTON, 20);
    bind(button, EVENT_BUTTON_CLICKED, u"count = (count or 0) + 1 wait(0.5) print(count, time())"_s);
    m_scene.play(true);
    click(middle(button));
    m_scene.advance(0.4);
    EXPECT_EQ(answers(), QStringList{u"waiting"_s});
    m_scene.advance(0.5);
    EXPECT_EQ(answers(), QStringList{u"1\t0.5"_s});
    click(middle(button));
    m_scene.play(false);
    m_scene.play(true);
    m_scene.advance(5);
    EXPECT_EQ(answers(), QStringList());
    click(middle(button));
    m_scene.advance(6);
    EXPECT_EQ(answers(), (QStringList{QString(), u"1\t6.0"_s})) << "globals do not outlive the preview";
}

TEST_F(EventsTest, the_log_tells_how_functions_ended_that_had_waited)
{
    CDXUTControl* button = make(DXUT_CONTROL_BUTTON, 20);
    CDXUTControl* other = make(DXUT_CONTROL_BUTTONST, 60);
    bind(button, EVENT_BUTTON_LEFT_DOWN, u"wait(0.2) wait(0.2) return 'late'"_s);
    bind(button, EVENT_BUTTON_LEFT_UP, u"wait(0.1) error('broken')"_s);
    bind(other, EVENT_BUTTON_CLICKED, u"wait(9)"_s);
    m_scene.play(true);
    click(middle(button));
    click(middle(other));
    const auto texts = [&] {
        QStringList all;
        for (const ScriptLogEntry& entry : m_world.script_log().entries())
            all << (entry.text.contains(u"broken"_s) ? entry.text.section(u' ', 0, 0) + u" broken"_s : entry.text);
        return all.join(u';');
    };
    EXPECT_EQ(texts(), u"waiting;waiting;waiting"_s);
    m_scene.advance(0.3);
    EXPECT_EQ(texts(), u"waiting;Error: broken;waiting;Script broken"_s);
    EXPECT_EQ(m_world.script_log().entries().front().kind, ScriptLogEntry::Kind::Result);
    m_scene.advance(0.6);
    EXPECT_EQ(texts(), u"late;Error: broken;waiting;Script broken"_s);
    m_scene.play(false);
    EXPECT_EQ(texts(), u"late;Error: broken;stopped;Script broken"_s);
}

TEST_F(EventsTest, scripts_that_never_end_are_stopped_and_told_of)
{
    CDXUTControl* button = make(DXUT_CONTROL_BUTTON, 20);
    bind(button, EVENT_BUTTON_CLICKED, u"\nwhile true do end"_s);
    bind(button, EVENT_BUTTON_LEFT_UP, u"return 'still here'"_s);
    m_scene.play(true);
    click(middle(button));
    EXPECT_EQ(m_world.script_log().entries().back().line, 2);
    click(middle(button));
    EXPECT_EQ(m_world.script_log().entries().size(), 4u);
}

TEST_F(EventsTest, renaming_breaks_nothing_and_a_missing_function_is_told)
{
    CDXUTControl* button = make(DXUT_CONTROL_BUTTON, 20);
    bind(button, EVENT_BUTTON_CLICKED, u"return (...).name"_s);
    act([&] {
        (void)set(*button, "name", u"new"_s);
        (void)set(*m_home, "name", u"elsewhere"_s);
    });
    m_scene.play(true);
    click(middle(button));
    EXPECT_EQ(answers(), QStringList{u"new"_s});
    m_scene.play(false);
    EXPECT_TRUE(m_scene.model().problems().empty());
    m_scene.functions().del_function(CEventManager::new_function_name(button->id(), EVENT_BUTTON_CLICKED));
    const auto problems = m_scene.model().problems();
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_EQ(problems[0].object, button);
    const QByteArray bytes = saved_bytes();
    ASSERT_TRUE(m_scene.open_scene(path(u"bytes.tarn"_s)).ok());
    EXPECT_EQ(m_scene.model().problems().size(), 1u) << "kept by the save";
    EXPECT_TRUE(saved_bytes() == bytes);
    m_scene.play(true);
    click(middle(core().controls().front()));
    EXPECT_EQ(m_world.script_log().entries().back().kind, ScriptLogEntry::Kind::Error);
}

TEST_F(EventsTest, a_function_with_a_fault_is_a_problem_until_its_text_is_mended)
{
    define(u"good"_s, u"return 1"_s);
    define(u"bad"_s, u"\nreturn +"_s);
    const auto problems = m_scene.model().problems();
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_EQ(problems[0].function, u"bad"_s);
    EXPECT_EQ(problems[0].line, 2);
    define(u"good"_s, u"return )"_s);
    EXPECT_EQ(m_scene.model().problems().size(), 2u);
    define(u"bad"_s, u"return 1"_s);
    EXPECT_EQ(m_scene.model().problems().size(), 1u);
}

TEST_F(EventsTest, a_name_of_several_objects_is_one_problem_of_the_second)
{
    CDXUTControl* first = make(DXUT_CONTROL_BUTTON, 20);
    CDXUTControl* second = make(DXUT_CONTROL_BUTTON, 60);
    CDXUTControl* third = make(DXUT_CONTROL_BUTTON, 100);
    for (CDXUTControl* each : {first, second, third})
        (void)set(*each, "name", u"same"_s);
    (void)set(*m_home, "name", u"same"_s); // Dialogs are asked for by another function.
    const auto problems = m_scene.model().problems();
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_EQ(problems[0].object, second);
    EXPECT_TRUE(problems[0].text.contains(u'3'));
}

TEST_F(EventsTest, cleaning_up_takes_the_scripts_of_removed_controls_only)
{
    CDXUTControl* kept = make(DXUT_CONTROL_BUTTON, 20);
    CDXUTControl* gone = make(DXUT_CONTROL_BUTTON, 60);
    bind(kept, EVENT_BUTTON_CLICKED, u"return 1"_s);
    bind(gone, EVENT_BUTTON_CLICKED, u"return 2"_s);
    define(u"shared"_s, u"return 3"_s);
    m_scene.events().CreateEventW(gone->id(), EVENT_BUTTON_LEFT_UP, u"shared"_s);
    const QString name = CEventManager::new_function_name(gone->id(), EVENT_BUTTON_CLICKED);
    m_scene.RemoveCtrl(gone);
    EXPECT_EQ(m_scene.model().problems().size(), 2u);
    m_scene.remove_deletectrl_GUI_scripts();
    EXPECT_EQ(m_scene.events().events().size(), 1u);
    EXPECT_FALSE(m_scene.functions().find_function(name));
    EXPECT_TRUE(m_scene.functions().find_function(u"shared"_s)) << "it has a name of its own";
    EXPECT_TRUE(m_scene.model().problems().empty());
}

TEST_F(EventsTest, undoing_an_import_brings_back_the_scripts_and_keeps_those_written_since)
{
    CDXUTControl* button = make(DXUT_CONTROL_BUTTON, 20);
    bind(button, EVENT_BUTTON_CLICKED, u"return 1"_s);
    const QByteArray before = text();
    ASSERT_TRUE(save(path(u"one.tarn"_s)).ok());
    ASSERT_TRUE(save(path()).ok());
    m_scene.journal().mark_saved();
    const auto steps = m_scene.journal().step_count();
    bind(button, EVENT_BUTTON_CLICKED, u"return 2"_s);
    EXPECT_FALSE(m_scene.journal().is_saved()) << "a script is part of the document";
    EXPECT_EQ(m_scene.journal().step_count(), steps) << "and outside of undo";
    CPakFile package;
    ASSERT_TRUE(package.open(path(u"one.tarn"_s)).ok());
    ASSERT_TRUE(m_scene.load(package, CTexPathInfo(path(), 1)).ok());
    EXPECT_TRUE(same_text(text(), before));
    define(u"written since"_s, u"return 3"_s);
    EXPECT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(m_scene.functions().functions().front()->text(), u"return 2"_s);
    EXPECT_TRUE(m_scene.journal().redo());
    EXPECT_TRUE(m_scene.functions().find_function(u"written since"_s));
}

TEST_F(EventsTest, merging_lets_names_and_events_follow_the_new_ids)
{
    CDXUTControl* button = make(DXUT_CONTROL_BUTTON, 20);
    const QString click_name = CEventManager::new_function_name(button->id(), EVENT_BUTTON_CLICKED);
    bind(button, EVENT_BUTTON_CLICKED, u"call('helper') call(\"%1\") return 'it' .. 'helper'"_s.arg(click_name));
    define(u"helper"_s, u"return 'theirs'"_s);
    define(u"same"_s, u"return 0"_s);
    define(m_home->get_func_str(EVENT_DIALOG_CLOSED), u"return 'closed'"_s);
    ASSERT_TRUE(save(path()).ok());
    define(u"helper"_s, u"return 'ours'"_s);
    const QByteArray before = text();

    ASSERT_TRUE(m_scene.on_merge_GUI(path(), u"merged"_s, true).ok());
    const CDXUTDialog* dialog = core().GetDialogs().back();
    const CDXUTControl* copy = dialog->controls().front();
    const QString name = CEventManager::new_function_name(copy->id(), EVENT_BUTTON_CLICKED);
    ASSERT_TRUE(m_scene.events().GetFunc(copy->id(), EVENT_BUTTON_CLICKED));
    EXPECT_EQ(m_scene.events().GetFunc(copy->id(), EVENT_BUTTON_CLICKED)->function(), name);
    ASSERT_TRUE(m_scene.functions().find_function(name));
    EXPECT_EQ(m_scene.functions().find_function(name)->text(),
              u"call('helper_2') call(\"%1\") return 'it' .. 'helper_2'"_s.arg(name));
    EXPECT_TRUE(m_scene.functions().find_function(dialog->get_func_str(EVENT_DIALOG_CLOSED)));
    EXPECT_FALSE(m_scene.functions().find_function(u"same_2"_s));
    EXPECT_EQ(m_scene.functions().find_function(u"helper"_s)->text(), u"return 'ours'"_s);

    const QByteArray merged = text();
    define(u"written since"_s, u"return 3"_s);
    EXPECT_TRUE(m_scene.journal().undo());
    EXPECT_TRUE(m_scene.functions().del_function(u"written since"_s)) << "not part of the merge";
    EXPECT_TRUE(same_text(text(), before));
    EXPECT_TRUE(m_scene.journal().redo());
    EXPECT_TRUE(same_text(text(), merged));
}

TEST_F(EventsTest, exporting_dialogs_takes_their_scripts_and_those_of_nobody)
{
    CDXUTDialog* other = dialog({0, 0, 100, 100}, u"Other"_s);
    CDXUTControl* inside = make(DXUT_CONTROL_BUTTON, 20);
    CDXUTControl* outside = control(DXUT_CONTROL_BUTTON, other, {0, 0, 10, 10});
    bind(inside, EVENT_BUTTON_CLICKED, u"return 1"_s);
    bind(outside, EVENT_BUTTON_CLICKED, u"return 2"_s);
    define(u"library"_s, u"return 3"_s);
    define(other->get_func_str(EVENT_DIALOG_MOVED), u"return 4"_s);
    core().SelectDialog(m_home, false);
    const QByteArray selected = all_texts(core(), true);
    for (const char* there : {"return 1", "return 3"})
        EXPECT_TRUE(selected.contains(there)) << there;
    for (const char* missing : {"return 2", "return 4"})
        EXPECT_FALSE(selected.contains(missing)) << missing;
    EXPECT_EQ(selected.count("\"type\":257"), 1);
}

TEST_F(EventsTest, a_preview_with_scripts_leaves_no_byte_behind)
{
    CDXUTControl* button = make(DXUT_CONTROL_BUTTON, 20);
    bind(button, EVENT_BUTTON_CLICKED,
         u"for _, c in ipairs(dialog('Home'):controls()) do c.text = 'changed' c:move(1, 1) c:hide() end "
         "dialog('Home'):close() dialog('Home').name = 'x'"_s);
    const QByteArray authored = saved_bytes();
    m_scene.play(true);
    click(middle(button));
    EXPECT_EQ(answers().size(), 1);
    EXPECT_FALSE(m_home->GetVisible());
    EXPECT_TRUE(saved_bytes() == authored);
    m_scene.play(false);
    EXPECT_TRUE(saved_bytes() == authored);
}
