#include "animation/animation_scene.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "gui_scene/layout_problems.h"
#include "versions_fixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace tarn;
using namespace tarn::test;

namespace {

class Checking : public VersionsTest {
protected:
    Checking() { VLCMsgIniW::set_language(Language::English); }
    ~Checking() override { VLCMsgIniW::set_language(Language::Chinese); }
    QStringList layout(const std::vector<QSize>& sizes, bool over_time = false)
    {
        QStringList found;
        const auto problems = find_layout_problems(m_scene, sizes, over_time);
        for (const auto& problem : problems.value())
            found << problem.place + u": "_s + problem.text;
        return found;
    }
};

} // namespace

TEST_F(Checking, notes_that_this_machine_has_no_player_for_the_movies_of_an_interface)
{
    const QByteArray before = qgetenv("TARN_MOVIE_PLAYER");
    qputenv("TARN_MOVIE_PLAYER", "/nowhere");
    keep(u"plain.tarn"_s);
    EXPECT_TRUE(run({u"--check"_s, path(u"plain.tarn"_s)}).output.isEmpty());
    control(DXUT_CONTROL_FLASH, dialog({0, 0, 200, 200}, u"Bag"_s), {0, 0, 90, 30}, u"Movie"_s);
    keep(u"a.tarn"_s);
    const auto result = run({u"--check"_s, path(u"a.tarn"_s)});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output.count(u": note: "_s), 1) << result.output.toStdString();
    EXPECT_TRUE(run({u"--check"_s, u"--json"_s, path(u"a.tarn"_s)}).output.contains(u"\"note\""_s));
    qputenv("TARN_MOVIE_PLAYER", before);
}

TEST_F(Checking, prints_lines_with_the_place_and_ends_with_one_when_there_are_errors)
{
    CDXUTControl* button = control(DXUT_CONTROL_BUTTON, dialog({0, 0, 200, 200}, u"Bag"_s), {0, 0, 90, 30}, u"btnA"_s);
    (void)m_scene.events().CreateEventW(button->id(), EVENT_BUTTON_CLICKED, u"missing"_s);
    ASSERT_TRUE(m_scene.functions().set_function(u"faulty"_s, u"log(1)\nif then"_s).ok());
    keep(u"a.tarn"_s);
    const auto result = run({u"--check"_s, path(u"a.tarn"_s)});
    EXPECT_EQ(result.status, 1);
    const QStringList lines = result.output.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2) << result.output.toStdString();
    EXPECT_TRUE(lines[0].startsWith(path(u"a.tarn"_s) + u": error: btnA: The event"_s)) << lines[0].toStdString();
    EXPECT_TRUE(lines[1].startsWith(path(u"a.tarn"_s) + u":2: error: faulty: "_s)) << lines[1].toStdString();

    ASSERT_EQ(run({u"--unpack"_s, path(u"a.tarn"_s), path(u"a"_s)}).status, 0);
    const QByteArray scene = test::content_of(path(u"a/scene.json"_s));
    const int line = int(scene.first(scene.indexOf("\"btnA\"")).count('\n')) + 1;
    const auto in_folder = run({u"--check"_s, path(u"a"_s)});
    EXPECT_EQ(in_folder.status, 1);
    EXPECT_TRUE(in_folder.output.startsWith(path(u"a"_s) + u"/scene.json:%1: error: btnA"_s.arg(line)))
        << in_folder.output.toStdString();
    EXPECT_TRUE(in_folder.output.contains(u"/functions.json:"_s)) << in_folder.output.toStdString();

    const auto json = run({u"--check"_s, u"--json"_s, path(u"a.tarn"_s)});
    const auto findings = QJsonDocument::fromJson(json.output.toUtf8()).array();
    ASSERT_EQ(findings.size(), 2);
    EXPECT_EQ(findings[0].toObject()[u"id"_s].toInt(), int(button->id()));
    EXPECT_EQ(findings[1].toObject()[u"function"_s].toString(), u"faulty"_s);
}

TEST_F(Checking, warnings_alone_end_with_zero_and_files_that_cannot_be_read_with_two)
{
    dialog({0, 0, 20, 20}, u"Same"_s);
    dialog({0, 0, 20, 20}, u"Same"_s);
    keep(u"a.tarn"_s);
    const auto result = run({u"--check"_s, path(u"a.tarn"_s)});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.output.contains(u": warning: Same: 2 dialogs"_s)) << result.output.toStdString();
    put(path(u"b.tarn"_s), "no package");
    for (const QStringList& wrong : {QStringList{u"--check"_s}, QStringList{u"--check"_s, path(u"b.tarn"_s)},
                                     QStringList{u"--check"_s, path(u"a.tarn"_s), path(u"gone.tarn"_s)},
                                     QStringList{u"--check"_s, path(u"a.tarn"_s), u"--size"_s, u"12"_s},
                                     QStringList{u"--check"_s, path(u"a.tarn"_s), u"--size"_s},
                                     QStringList{u"--check"_s, path(u"a.tarn"_s), u"--lang"_s, u"fr"_s}}) {
        EXPECT_EQ(run(wrong).status, 2) << wrong.join(u' ').toStdString();
        EXPECT_FALSE(run(wrong).errors.isEmpty());
    }
}

TEST_F(Checking, layouts_tell_texts_that_are_cut_controls_off_the_screen_and_clickable_ones_that_overlap)
{
    CDXUTDialog* bag = dialog({0, 0, 400, 200}, u"Bag"_s);
    (void)set(*control(DXUT_CONTROL_STATIC, bag, {0, 0, 40, 20}, u"txtLong"_s), "text", u"A text that is too long"_s);
    (void)set(*control(DXUT_CONTROL_STATIC, bag, {0, 30, 200, 20}, u"txtFits"_s), "text", u"Short"_s);
    control(DXUT_CONTROL_BUTTON, bag, {0, 60, 100, 30}, u"btnBelow"_s);
    control(DXUT_CONTROL_BUTTON, bag, {50, 60, 100, 30}, u"btnAbove"_s);
    control(DXUT_CONTROL_BUTTON, bag, {150, 60, 100, 30}, u"btnBeside"_s);
    (void)set(*control(DXUT_CONTROL_STATIC, bag, {60, 60, 10, 10}, u"txtOver"_s), "text", QString());
    control(DXUT_CONTROL_BUTTON, core().GetRootDialog(), {900, 10, 90, 30}, u"btnFar"_s);
    control(DXUT_CONTROL_BUTTON, core().GetRootDialog(), {900, 10, 50, 20}, u"btnHidden"_s)->SetVisible(false);
    EXPECT_EQ(layout({{1280, 720}}),
              QStringList({u"txtLong: The text does not fit (1280x720)."_s,
                           u"btnBelow: It overlaps btnAbove, which takes clicks, too (1280x720)."_s}));
    EXPECT_TRUE(layout({{1280, 720}, {800, 600}}).contains(u"btnFar: The control is off the screen (800x600)."_s));
    EXPECT_EQ(core().screen_size(), QSize(1280, 720));
}

TEST_F(Checking, over_time_tells_where_an_animation_leads)
{
    CDXUTControl* button = control(DXUT_CONTROL_BUTTON, core().GetRootDialog(), {100, 10, 90, 30}, u"btnFly"_s);
    CTimebar* bar = m_scene.animation().create_bar(4, u"Fly"_s);
    m_scene.animation().set_editing(true);
    bar->create_object(TimerObjectType::Control, {button->id()});
    bar->set_current_time(0);
    bar->record_selection({button});
    bar->set_current_time(4);
    button->SetLocation(3000, 10);
    bar->record_selection({button});
    m_scene.animation().set_editing(false);
    m_scene.animation().set_current_bar(nullptr);
    const QByteArray before = text();
    EXPECT_TRUE(layout({{1280, 720}}).isEmpty());
    EXPECT_EQ(layout({{1280, 720}}, true),
              QStringList(u"btnFly: The control is off the screen (1280x720, timebar Fly at 1.64 s)."_s));
    EXPECT_EQ(button->x(), 100);
    EXPECT_TRUE(same_text(text(), before));
}
