#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/authored.h"
#include "gui_core/dxut_menu.h"
#include "support/gui_fixture.h"
#include "versions_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class ThreeWayMerge : public VersionsTest {
protected:
    ThreeWayMerge()
    {
        CDXUTDialog* bag = dialog({10, 10, 300, 200}, u"Bag"_s);
        control(DXUT_CONTROL_BUTTON, bag, {0, 0, 50, 20}, u"btnOne"_s);
        control(DXUT_CONTROL_BUTTON, bag, {0, 30, 50, 20}, u"btnTwo"_s);
        dialog({400, 10, 300, 200}, u"Map"_s);
    }
    void set_function(const QString& name, const QString& text)
    {
        ASSERT_TRUE(m_scene.functions().set_function(name, text).ok());
    }
    CTVar* place_of(const QString& bar, CDXUTControl* target)
    {
        for (CTimebar* each : m_scene.animation().bars())
            if (each->name() == bar)
                for (CTVar* variable : each->SearchItemUsage(*target)->variables())
                    if (!variable->keys().is_empty())
                        return variable;
        return nullptr;
    }
    static QStringList told(const MergedScene& merged)
    {
        QStringList all;
        for (const MergeConflict& c : merged.conflicts)
            all << QStringLiteral("%1|%2|%3|%4|%5|%6").arg(c.place, c.field, c.part, c.base, c.ours, c.theirs);
        return all;
    }
};

} // namespace

TEST_F(ThreeWayMerge, takes_from_each_side_what_that_changed_attribute_by_attribute)
{
    const auto merged = merge(
        [&] {
            (void)set(*control_named(u"btnOne"_s), "text", u"One"_s);
            control_named(u"btnTwo"_s)->SetLocation(5, 30);
            (void)set_entry(*control_named(u"btnOne"_s), "style_colors", u"Body.normal"_s, qint64(1));
        },
        [&] {
            (void)set(*control_named(u"btnOne"_s), "bold", true);
            control_named(u"btnTwo"_s)->SetLocation(0, 60);
            (void)set_entry(*control_named(u"btnOne"_s), "style_colors", u"Body.hover"_s, qint64(2));
            core().move_guide(Qt::Vertical, {}, 100);
        });
    EXPECT_TRUE(merged.conflicts.empty()) << told(merged).join(u'\n').toStdString();
    show(merged);
    EXPECT_EQ(get(*control_named(u"btnOne"_s), "text"), Value(u"One"_s));
    EXPECT_EQ(get(*control_named(u"btnOne"_s), "bold"), Value(true));
    EXPECT_EQ(std::get<NumberMap>(get(*control_named(u"btnOne"_s), "style_colors")).size(), 2);
    EXPECT_EQ(control_named(u"btnTwo"_s)->rect(), QRectF(5, 60, 50, 20));
    EXPECT_EQ(core().guides(Qt::Vertical), QList<quint32>{100});
}

TEST_F(ThreeWayMerge, what_both_changed_otherwise_is_told_with_all_values_and_chosen_by_side)
{
    (void)set(*control_named(u"btnOne"_s), "text", u"Old"_s);
    const auto ours = [&] { (void)set(*control_named(u"btnOne"_s), "text", u"Mine"_s); };
    const auto theirs = [&] { (void)set(*control_named(u"btnOne"_s), "text", u"Yours"_s); };
    auto merged = merge(ours, theirs);
    ASSERT_EQ(told(merged).size(), 1);
    EXPECT_TRUE(told(merged)[0].endsWith(u"\"btnOne\"（属于 Bag）|text||\"Old\"|\"Mine\"|\"Yours\""_s))
        << told(merged)[0].toStdString();
    show(merged);
    EXPECT_EQ(get(*control_named(u"btnOne"_s), "text"), Value(u"Mine"_s));
    show(merge_files(u"base"_s, u"ours"_s, u"theirs"_s, MergeSide::Theirs));
    EXPECT_EQ(get(*control_named(u"btnOne"_s), "text"), Value(u"Yours"_s));
}

TEST_F(ThreeWayMerge, what_is_new_on_both_sides_stays_apart_with_its_events_and_scripts)
{
    const auto make = [&](const QString& name, const QString& says) {
        CDXUTControl* made = control(DXUT_CONTROL_BUTTON, dialog_named(u"Bag"_s), {0, 60, 50, 20}, name);
        const QString function = CEventManager::new_function_name(made->id(), EVENT_BUTTON_CLICKED);
        set_function(function, u"log(\"%1\")"_s.arg(says));
        set_function(u"call_"_s + name, u"call(\"%1\")"_s.arg(function));
        ASSERT_TRUE(m_scene.events().CreateEventW(made->id(), EVENT_BUTTON_CLICKED, function));
    };
    const auto merged = merge([&] { make(u"btnOurs"_s, u"ours"_s); }, [&] { make(u"btnTheirs"_s, u"theirs"_s); });
    EXPECT_TRUE(merged.conflicts.empty()) << told(merged).join(u'\n').toStdString();
    show(merged);
    for (const auto& [name, says] : {std::pair(u"btnOurs"_s, u"ours"_s), {u"btnTheirs"_s, u"theirs"_s}}) {
        const CDXUTControl* made = control_named(name);
        ASSERT_TRUE(made);
        const CGuiEvent* event = m_scene.events().GetFunc(made->id(), EVENT_BUTTON_CLICKED);
        ASSERT_TRUE(event);
        EXPECT_EQ(event->function(), CEventManager::new_function_name(made->id(), EVENT_BUTTON_CLICKED));
        EXPECT_EQ(m_scene.functions().find_function(event->function())->text(), u"log(\"%1\")"_s.arg(says));
        EXPECT_EQ(m_scene.functions().find_function(u"call_"_s + name)->text(),
                  u"call(\"%1\")"_s.arg(event->function()));
    }
    const quint32 fresh = control(DXUT_CONTROL_BUTTON, dialog_named(u"Bag"_s), {0, 0, 1, 1})->id();
    EXPECT_GT(fresh, control_named(u"btnTheirs"_s)->id());
    EXPECT_GT(fresh, control_named(u"btnOurs"_s)->id());
}

TEST_F(ThreeWayMerge, an_event_or_function_that_both_made_is_one_thing)
{
    const auto bind = [&](const QString& text) {
        set_function(u"open"_s, text);
        (void)m_scene.events().CreateEventW(control_named(u"btnOne"_s)->id(), EVENT_BUTTON_CLICKED, u"open"_s);
    };
    auto merged = merge([&] { bind(u"-- same"_s); }, [&] { bind(u"-- same"_s); });
    EXPECT_TRUE(merged.conflicts.empty()) << told(merged).join(u'\n').toStdString();
    show(merged);
    EXPECT_EQ(m_scene.events().events().size(), 1u);
    EXPECT_EQ(m_scene.functions().functions().size(), 1u);
    open(u"base"_s);
    merged = merge([&] { bind(u"-- mine"_s); }, [&] { bind(u"-- yours"_s); });
    ASSERT_EQ(told(merged).size(), 1);
    EXPECT_TRUE(told(merged)[0].endsWith(u"|text|||\"-- mine\"|\"-- yours\""_s)
                || told(merged)[0].endsWith(u"|text||\"\"|\"-- mine\"|\"-- yours\""_s))
        << told(merged)[0].toStdString();
}

TEST_F(ThreeWayMerge, what_one_removed_goes_unless_the_other_changed_it_or_put_something_in)
{
    const auto remove = [&] { m_scene.RemoveDialog(dialog_named(u"Bag"_s)); };
    auto merged = merge(remove, [&] { dialog_named(u"Map"_s)->SetLocation(1, 1); });
    EXPECT_TRUE(merged.conflicts.empty());
    show(merged);
    EXPECT_FALSE(dialog_named(u"Bag"_s));
    EXPECT_FALSE(control_named(u"btnOne"_s));

    const auto fill = [&] {
        control(DXUT_CONTROL_BUTTON, dialog_named(u"Bag"_s), {0, 60, 50, 20}, u"btnNew"_s);
        (void)set(*control_named(u"btnTwo"_s), "text", u"Two"_s);
    };
    open(u"base"_s);
    merged = merge(remove, fill);
    EXPECT_EQ(merged.conflicts.size(), 2u) << told(merged).join(u'\n').toStdString();
    show(merged);
    EXPECT_FALSE(dialog_named(u"Bag"_s) || control_named(u"btnNew"_s) || control_named(u"btnTwo"_s));
    show(merge_files(u"base"_s, u"ours"_s, u"theirs"_s, MergeSide::Theirs));
    ASSERT_TRUE(dialog_named(u"Bag"_s));
    QStringList names;
    for (const CDXUTControl* each : dialog_named(u"Bag"_s)->controls())
        names << each->name();
    EXPECT_EQ(names, QStringList({u"btnTwo"_s, u"btnNew"_s})) << "what nobody touched stays away";
}

TEST_F(ThreeWayMerge, keys_merge_by_their_times)
{
    CTimebar* bar = m_scene.animation().create_bar(10, u"Intro"_s);
    CTimerObject* object = bar->create_object(TimerObjectType::Control, {control_named(u"btnOne"_s)->id()});
    bar->set_current_time(0);
    bar->record_selection({control_named(u"btnOne"_s)});
    ASSERT_FALSE(object->variables().empty());
    const QString place = place_of(u"Intro"_s, control_named(u"btnOne"_s))->name();
    ASSERT_FALSE(place.isEmpty());
    const auto with_key = [&](float time, float x, float ease = 0) {
        place_of(u"Intro"_s, control_named(u"btnOne"_s))->write<VarState>([&](VarState& s) {
            Key key{.time = time, .value = KeyValue(s.keys.type()), .ease = ease};
            key.value = s.keys.type() == VarType::Vec ? KeyValue::vec(x, 0, 0) : KeyValue::number(x);
            s.keys.set_key(key);
        });
    };
    with_key(1, 10);
    with_key(2, 20);
    const auto merged = merge(
        [&] {
            with_key(1, 11);
            with_key(2, 20, 50);
            with_key(3, 30);
        },
        [&] {
            with_key(1, 12);
            with_key(2, 22);
            with_key(4, 40);
        });
    ASSERT_EQ(told(merged).size(), 1);
    EXPECT_EQ(merged.conflicts[0].part, u"1"_s);
    show(merged);
    const KeyTrack& keys = place_of(u"Intro"_s, control_named(u"btnOne"_s))->keys();
    ASSERT_EQ(keys.size(), 5);
    EXPECT_EQ(keys.value(1).part(0), 11);
    EXPECT_EQ(keys.value(2).part(0), 22);
    EXPECT_EQ(keys.ease(2), 50);
}

TEST_F(ThreeWayMerge, a_picture_that_one_side_let_go_stays_where_the_other_shows_it)
{
    core().set_texture(u"fire.png"_s, png(Qt::red));
    auto* picture = control(DXUT_CONTROL_PICTURE, dialog_named(u"Map"_s), {0, 0, 10, 10}, u"picOld"_s);
    (void)set(*picture, "image", u"fire.png"_s);
    const auto merged = merge([&] { m_scene.RemoveCtrl(control_named(u"picOld"_s)); },
                              [&] {
                                  auto* other = control(DXUT_CONTROL_PICTURE, dialog_named(u"Bag"_s), {0, 0, 10, 10});
                                  (void)set(*other, "image", u"fire.png"_s);
                              });
    EXPECT_TRUE(merged.conflicts.empty());
    EXPECT_TRUE(merged.scene.files.contains(u"textures/fire.png"_s));
}

TEST_F(ThreeWayMerge, files_of_other_scenes_are_refused)
{
    keep(u"base"_s);
    m_scene.new_scene();
    core().create_menu(u"Pause"_s);
    control(DXUT_CONTROL_SLIDER, core().GetRootDialog(), {0, 0, 10, 10});
    keep(u"other"_s);
    const auto merged = merge_versions(m_tables.document(), read_version(u"base"_s), read_version(u"other"_s),
                                       read_version(u"base"_s));
    EXPECT_FALSE(merged.ok());
}

TEST_F(ThreeWayMerge, the_command_writes_tells_and_refuses)
{
    keep(u"base"_s);
    version(u"ours"_s, [&] { (void)set(*dialog_named(u"Bag"_s), "caption", u"Mine"_s); });
    version(u"theirs"_s, [&] { (void)set(*dialog_named(u"Bag"_s), "caption", u"Yours"_s); });
    const QStringList line{u"merge"_s, path(u"base"_s), path(u"ours"_s), path(u"theirs"_s), u"-o"_s, path(u"out"_s)};
    const auto caption = [&] {
        open(u"out"_s);
        return dialog_named(u"Bag"_s)->dialog_state().caption;
    };
    auto result = run(line);
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.errors.contains(u"\"Mine\""_s) && result.errors.contains(u"\"Yours\""_s));
    EXPECT_EQ(caption(), u"Mine"_s);
    EXPECT_EQ(run(line + QStringList{u"--theirs"_s}).status, 0);
    EXPECT_EQ(caption(), u"Yours"_s);
    const QByteArray before = test::content_of(path(u"out"_s));
    put(path(u"broken"_s), "PK no more");
    for (const QStringList& wrong :
         {QStringList{u"merge"_s, path(u"base"_s), path(u"ours"_s), path(u"broken"_s), u"-o"_s, path(u"out"_s)},
          QStringList{u"merge"_s, path(u"base"_s), path(u"ours"_s), u"-o"_s, path(u"out"_s)},
          QStringList{u"merge"_s, path(u"base"_s), path(u"ours"_s), path(u"gone"_s), u"-o"_s, path(u"out"_s)},
          QStringList{u"merge"_s, path(u"base"_s), path(u"ours"_s), path(u"theirs"_s)},
          line + QStringList{u"--ours"_s, u"--theirs"_s}, line + QStringList{u"--neither"_s}}) {
        result = run(wrong);
        EXPECT_EQ(result.status, 2) << wrong.join(u' ').toStdString();
        EXPECT_FALSE(result.errors.isEmpty());
    }
    EXPECT_EQ(test::content_of(path(u"out"_s)), before);
}

TEST_F(ThreeWayMerge, who_is_asked_decides_each_conflict_and_what_follows_from_that)
{
    keep(u"base"_s);
    version(u"ours"_s, [&] {
        (void)set(*dialog_named(u"Bag"_s), "caption", u"Mine"_s);
        (void)set(*control_named(u"btnOne"_s), "text", u"One"_s);
        core().remove_dialog(dialog_named(u"Map"_s));
    });
    version(u"theirs"_s, [&] {
        (void)set(*dialog_named(u"Bag"_s), "caption", u"Yours"_s);
        (void)set(*control_named(u"btnOne"_s), "text", u"Un"_s);
        (void)set(*dialog_named(u"Map"_s), "caption", u"Kept"_s);
    });
    const QStringList line{u"merge"_s, path(u"base"_s), path(u"ours"_s), path(u"theirs"_s), u"-o"_s, path(u"out"_s)};
    EXPECT_EQ(run(line + QStringList{u"--window"_s}).status, 2) << "nobody can be asked here";
    QStringList asked;
    bool cancels = true;
    set_ask_conflicts([&](const std::vector<MergeConflict>& conflicts) -> std::optional<std::vector<MergeSide>> {
        std::vector<MergeSide> sides;
        for (const MergeConflict& conflict : conflicts) {
            asked << conflict.field;
            sides.push_back(conflict.field == u"caption" ? MergeSide::Ours : MergeSide::Theirs);
        }
        return cancels ? std::nullopt : std::optional(sides);
    });
    put(path(u"out"_s), "untouched");
    EXPECT_EQ(run(line + QStringList{u"--window"_s}).status, 1);
    EXPECT_EQ(test::content_of(path(u"out"_s)), "untouched");
    asked.clear();
    cancels = false;
    EXPECT_EQ(run(line + QStringList{u"--window"_s}).status, 0);
    asked.sort();
    EXPECT_EQ(asked, (QStringList{u""_s, u"caption"_s, u"text"_s})) << "each once";
    open(u"out"_s);
    EXPECT_EQ(dialog_named(u"Bag"_s)->dialog_state().caption, u"Mine"_s);
    EXPECT_EQ(std::get<QString>(get(*control_named(u"btnOne"_s), "text")), u"Un"_s);
    ASSERT_TRUE(dialog_named(u"Map"_s));
    EXPECT_EQ(dialog_named(u"Map"_s)->dialog_state().caption, u"Kept"_s);
    EXPECT_EQ(run(line + QStringList{u"--window"_s, u"--ours"_s}).status, 2);
    set_ask_conflicts({});
}
