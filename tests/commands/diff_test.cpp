#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "versions_fixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace tarn;
using namespace tarn::test;

namespace {

class Differences : public VersionsTest {
protected:
    Differences()
    {
        VLCMsgIniW::set_language(Language::English);
        CDXUTDialog* bag = dialog({10, 10, 300, 200}, u"Inventory"_s);
        for (int i = 1; i <= 3; ++i)
            control(DXUT_CONTROL_BUTTON, bag, QRectF(0, 30 * i, 50, 20), u"btn%1"_s.arg(i));
        CTimebar* bar = m_scene.animation().create_bar(10, u"Intro"_s);
        bar->create_object(TimerObjectType::Control, {control_named(u"btn1"_s)->id()});
        bar->record_selection({control_named(u"btn1"_s)});
        edit_keys([](KeyTrack& keys) {
            for (int i = 1; i <= 5; ++i)
                keys.set_key({.time = float(i), .value = keys.value(0)});
        });
        keep(u"base"_s);
    }
    ~Differences() override { VLCMsgIniW::set_language(Language::Chinese); }
    template <class Edit>
    void edit_keys(Edit&& edit)
    {
        CTimerObject* object = m_scene.animation().bars().front()->SearchItemUsage(*control_named(u"btn1"_s));
        for (CTVar* variable : object->variables())
            if (!variable->keys().is_empty())
                return variable->write<VarState>([&](VarState& s) { edit(s.keys); });
        FAIL() << "there are no keys";
    }
    QString words()
    {
        const auto result = run({u"diff"_s, path(u"base"_s), path(u"now"_s)});
        EXPECT_EQ(result.status, 1);
        return result.output;
    }
};

} // namespace

TEST_F(Differences, are_told_in_words_by_dialogs_and_timebars)
{
    version(u"now"_s, [&] {
        (void)set(*dialog_named(u"Inventory"_s), "caption", u"Bag"_s);
        control_named(u"btn1"_s)->SetLocation(5, 5);
        control_named(u"btn2"_s)->SetLocation(5, 5);
        m_scene.RemoveCtrl(control_named(u"btn3"_s));
        edit_keys([](KeyTrack& keys) { keys.shift(1, 0.2f); });
    });
    EXPECT_EQ(words(),
              u"dialog Inventory: caption changed (\"Inventory\" → \"Bag\"), 2 controls moved, btn3 removed\n"
              "timebar Intro: 5 keys 0.2 s later\n"_s);
}

TEST_F(Differences, of_one_part_tell_the_values_and_what_has_no_name_goes_by_what_it_belongs_to)
{
    version(u"now"_s, [&] {
        (void)set(*control_named(u"btn1"_s), "name", u"btnFirst"_s);
        const quint32 first = control_named(u"btnFirst"_s)->id();
        (void)m_scene.events().CreateEventW(first, EVENT_BUTTON_CLICKED, u"go"_s);
    });
    EXPECT_EQ(words(), u"dialog Inventory: btnFirst name changed (\"btn1\" → \"btnFirst\")\nevent btnFirst: added\n"_s);
}

TEST_F(Differences, a_new_dialog_and_another_order_are_one_word_each)
{
    version(u"now"_s, [&] {
        CDXUTDialog* fresh = dialog({0, 0, 9, 9}, u"Fresh"_s);
        control(DXUT_CONTROL_BUTTON, fresh, {0, 0, 5, 5}, u"btnIn"_s);
        (void)dialog_named(u"Inventory"_s)->SetCtrlLayerUpDown(control_named(u"btn1"_s), 1);
    });
    const QString all = words();
    EXPECT_TRUE(all.contains(u"dialog Fresh: added\n"_s)) << all.toStdString();
    EXPECT_FALSE(all.contains(u"btnIn"_s)) << all.toStdString();
    EXPECT_TRUE(all.contains(u"dialog Inventory: controls changed\n"_s)) << all.toStdString();
}

TEST_F(Differences, as_json_have_every_value_and_equal_files_none)
{
    version(u"now"_s, [&] { (void)set(*control_named(u"btn2"_s), "text", u"\"Two\""_s); });
    const auto result = run({u"diff"_s, path(u"base"_s), path(u"now"_s), u"--json"_s});
    EXPECT_EQ(result.status, 1);
    const auto objects = QJsonDocument::fromJson(result.output.toUtf8()).object()[u"objects"_s].toArray();
    ASSERT_EQ(objects.size(), 1) << result.output.toStdString();
    const auto field = objects[0].toObject()[u"fields"_s].toArray()[0].toObject();
    EXPECT_EQ(field[u"field"_s].toString(), u"text"_s);
    EXPECT_EQ(field[u"after"_s].toString(), u"\"Two\""_s);
    const auto same = run({u"diff"_s, path(u"now"_s), path(u"now"_s)});
    EXPECT_EQ(same.status, 0);
    EXPECT_TRUE(same.output.isEmpty());
    for (const QStringList& wrong :
         {QStringList{u"diff"_s, path(u"now"_s)}, QStringList{u"diff"_s, path(u"now"_s), path(u"gone"_s)},
          QStringList{u"diff"_s, path(u"now"_s), path(u"now"_s), path(u"now"_s)}}) {
        EXPECT_EQ(run(wrong).status, 2);
        EXPECT_FALSE(run(wrong).errors.isEmpty());
    }
}

TEST_F(Differences, for_git_may_lack_a_side_and_never_fail)
{
    const QString file = path(u"base"_s);
    const auto result = run(
        {u"diff"_s, u"--git"_s, u"hud.tarn"_s, u"/dev/null"_s, u"."_s, u"."_s, file, u"abc"_s, u"100644"_s});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.output.contains(u"dialog Inventory: added"_s)) << result.output.toStdString();
    put(path(u"broken"_s), "x");
    EXPECT_EQ(run({u"diff"_s, u"--git"_s, u"a"_s, file, u"a"_s, u"1"_s, path(u"broken"_s), u"b"_s, u"1"_s}).status, 0);
}
