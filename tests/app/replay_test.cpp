// Recorded input: its script, what is recorded of a preview, and how it is replayed.

#include "core/field.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/dxut_combo_box.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_list_box.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "gui_core/gui_event.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/translations/translations.h"
#include "replay/input_recorder.h"
#include "replay/input_replay.h"
#include "replay/replay_command.h"
#include "settings.h"
#include "studio.h"
#include "support/attributes.h"
#include "support/printing.h"
#include "view/view3d.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarn;

namespace {

constexpr QSize screen(800, 600);

class Replaying : public testing::Test {
protected:
    Replaying()
    {
        VLCMsgIniW::set_language(Language::English);
        settings::forget_all();
        start_studio();
        m_studio->start_world();
        m_scene = dynamic_cast<CGuiPlugScene*>(m_studio->scene());
        m_view = std::make_unique<CView3D>(m_studio->world());
        m_view->set_fixed_view_size(screen);
        m_view->set_screen_size(screen);
        m_bag = core().create_dialog({100, 100, 400, 300}, u"Bag"_s);
        m_use = add(DXUT_CONTROL_BUTTON, u"Use"_s, {10, 10, 100, 30});
        m_volume = add(DXUT_CONTROL_SLIDER, u"Volume"_s, {10, 60, 200, 20});
        m_name = add(DXUT_CONTROL_EDITBOX, u"Name"_s, {10, 100, 200, 30});
        (void)test::set(*m_name, "text", QString());
        bind(
            *m_use, EVENT_BUTTON_CLICKED, u"use"_s,
            u"print('used', random(1000), math.random(1000))\ncontrol('Volume').enabled = false\ndialog('Bag').movable = false"_s);
    }
    ~Replaying() override
    {
        m_view.reset();
        m_studio->stop();
    }
    void start_studio()
    {
        m_studio = std::make_unique<Studio>();
        const QString plug_in = QStringLiteral(TARN_SCENE_PLUGIN);
        EXPECT_TRUE(m_studio->load_plug_ins(QFileInfo(plug_in).path(), Studio::Windows::None).isEmpty());
    }
    CGuiCore& core() { return m_scene->gui_core(); }
    CDXUTControl* add(int type, const QString& name, const QRectF& rect)
    {
        CDXUTControl* control = core().create_control(type, m_bag, rect);
        (void)test::set(*control, "name", name);
        return control;
    }
    void bind(CDXUTControl& control, quint32 event, const QString& function, const QString& text)
    {
        ASSERT_TRUE(m_scene->functions().set_function(function, text).ok());
        (void)m_scene->events().CreateEventW(control.id(), event, function);
    }
    QPointF middle(const CDXUTControl& control) const { return control.screen_bounds().center(); }
    void mouse(MouseEvent::Kind kind, QPointF place, Qt::MouseButton button = Qt::NoButton)
    {
        m_view->send_mouse({kind, place, button, Qt::NoModifier});
    }
    void click(QPointF place)
    {
        mouse(MouseEvent::Kind::Move, place);
        mouse(MouseEvent::Kind::Press, place, Qt::LeftButton);
        mouse(MouseEvent::Kind::Release, place, Qt::LeftButton);
    }
    void drag(QPointF from, QPointF to)
    {
        mouse(MouseEvent::Kind::Press, from, Qt::LeftButton);
        for (int i = 1; i <= 10; ++i)
            mouse(MouseEvent::Kind::Move, from + (to - from) * i / 10);
        mouse(MouseEvent::Kind::Release, to, Qt::LeftButton);
    }
    void type(const QString& text)
    {
        for (const QChar c : text) {
            m_view->send_key(c.toUpper().unicode(), {});
            m_view->send_text(c, {});
        }
    }
    /// What a recorder makes of what `play` does in a preview.
    template <class Play>
    QString recorded(Play&& play)
    {
        InputRecorder recorder(*m_studio, *m_view);
        m_studio->set_playing(true);
        play(recorder);
        m_studio->set_playing(false);
        recorder.end();
        return recorder.text(u"/tmp/x.tarn-input"_s);
    }
    ReplayResult replay(const QString& text)
    {
        const auto script = parse_input_script(text.toUtf8());
        EXPECT_TRUE(script) << text.toStdString() << script.status().message().toStdString();
        return script ? replay_input(*m_studio, *m_view, script.value()).value() : ReplayResult{.line = -1};
    }
    /// The lines behind the head; what is not the test's own business left out.
    static QStringList steps(const QString& text)
    {
        QStringList lines = text.mid(text.indexOf(u"\n\n"_s) + 2).split(u'\n', Qt::SkipEmptyParts);
        lines.removeIf([](const QString& line) { return line.startsWith(u"wait "_s); });
        return lines;
    }
    CDXUTItems* add_items(int type, const QString& name, const QRectF& rect, int count)
    {
        auto* items = dynamic_cast<CDXUTItems*>(add(type, name, rect));
        for (int i = 0; i < count; ++i)
            items->AddItem(QString::number(i));
        return items;
    }
    QString all_of_it()
    {
        return recorded([&](InputRecorder& recorder) {
            drag(middle(*m_volume), middle(*m_volume) + QPointF(60, 30));
            click(middle(*m_use));
            click(middle(*m_name));
            type(u"hello"_s);
            m_view->send_key(Qt::Key_Backspace, {});
            mouse(MouseEvent::Kind::Move, middle(*m_name));
            EXPECT_EQ(recorder.expect_here(), u"Bag/Name"_s);
            mouse(MouseEvent::Kind::Move, {790, 590});
            EXPECT_TRUE(recorder.expect_here().isNull());
        });
    }

    std::unique_ptr<Studio> m_studio;
    CGuiPlugScene* m_scene = nullptr;
    std::unique_ptr<CView3D> m_view;
    CDXUTDialog* m_bag = nullptr;
    CDXUTControl* m_use = nullptr;
    CDXUTControl* m_volume = nullptr;
    CDXUTControl* m_name = nullptr;
    QString m_said; ///< by the program
};

} // namespace

TEST_F(Replaying, what_was_recorded_reads_well_and_holds_when_it_is_replayed)
{
    const QString text = all_of_it();
    for (const QString& line :
         {u"click 160 149  # Bag/Use\n"_s, u"expect call \"use\" of \"Use\"\n"_s, u"expect no more\n"_s,
          u"expect \"Bag/Volume\" enabled false\n"_s, u"type \"hello\"\n"_s, u"key \"Backspace\"\n"_s,
          u"expect \"Bag/Name\" text \"hell\"\n"_s, u"expect \"Bag/Volume\" value "_s})
        EXPECT_TRUE(text.contains(line)) << line.toStdString() << text.toStdString();
    EXPECT_LT(text.count(u'\n'), 40) << text.toStdString();
    const ReplayResult result = replay(text);
    EXPECT_EQ(result.line, 0) << result.difference.toStdString() << text.toStdString();
    EXPECT_GT(result.expectations, 8);
    EXPECT_FALSE(m_scene->is_playing());
    const auto again = parse_input_script(text.toUtf8());
    EXPECT_EQ(parse_input_script(input_script_text(again.value()).toUtf8()).value().steps.size(),
              again.value().steps.size());
}

TEST_F(Replaying, tells_the_first_difference_with_its_line)
{
    const QString text = all_of_it();
    const auto line_of = [&](const QString& part) { return int(text.left(text.indexOf(part)).count(u'\n')) + 1; };
    ASSERT_TRUE(m_scene->functions().set_function(u"use"_s, u"print('used', random(1000), math.random(1000))"_s).ok());
    ReplayResult result = replay(text);
    EXPECT_EQ(result.line, line_of(u"expect \"Bag/Volume\" enabled"_s));
    EXPECT_TRUE(result.difference.contains(u"Bag/Volume"_s)) << result.difference.toStdString();
    ASSERT_TRUE(m_scene->functions().set_function(u"use"_s, u""_s).ok());
    result = replay(text);
    EXPECT_EQ(result.line, line_of(u"expect print"_s)) << result.difference.toStdString();
    ASSERT_TRUE(
        m_scene->functions()
            .set_function(
                u"use"_s,
                u"print('used', random(1000), math.random(1000)) control('Volume').enabled = false print('more')"_s)
            .ok());
    EXPECT_EQ(replay(text).line, line_of(u"expect no more\nexpect \"Bag/Volume\" enabled"_s));
    (void)test::set(*m_use, "name", u"Other"_s);
    EXPECT_EQ(replay(text).line, line_of(u"expect call"_s));
}

TEST_F(Replaying, what_a_player_moves_folds_scrolls_and_opens_is_expected)
{
    (void)test::set(*m_bag, "minimize_button", true);
    CDXUTItems* list = add_items(DXUT_CONTROL_LISTBOX, u"List"_s, {220, 10, 100, 60}, 20);
    CDXUTItems* level = add_items(DXUT_CONTROL_COMBOBOX, u"Level"_s, {10, 30, 100, 24}, 3);
    CDXUTMenu* menu = core().create_menu(u"More"_s);
    CDXUTMenuItem* sound = core().create_menu_item(*menu, 0, {.text = u"Sound"_s});
    (void)test::set(*sound, "checkable", true);
    (void)test::set(*m_volume, "right_click_menu", ObjectRef{menu->id()});
    const QPointF caption = m_bag->caption_rect().center();
    const QPointF way(53, 21);
    const QPointF row(0, 24 / 2 + CDXUTItems::row_height * 1.5);
    const QString text = recorded([&](InputRecorder&) {
        drag(caption, caption + way);
        m_view->send_wheel(middle(*list), -2);
        click(middle(*level));
        click(middle(*level) + row); // The slider lies below.
        mouse(MouseEvent::Kind::Release, middle(*m_volume), Qt::RightButton);
        click(middle(*m_volume) + QPointF(20, 15));
        m_view->send_key(Qt::Key_Tab, {});
        click(m_bag->caption_button_rect(CDXUTDialog::CaptionButton::Minimize).center());
    });
    QStringList found = steps(text);
    for (QString& line : found)
        if (!line.startsWith(u"expect"_s))
            line = line.section(u' ', 0, 0) + (line.contains(u'#') ? line.mid(line.indexOf(u"  #"_s)) : QString());
    EXPECT_EQ(found.join(u'\n'),
              u"drag  # Bag\nexpect no more\nexpect \"Bag\" x 153\nexpect \"Bag\" y 121\n"
              "wheel  # Bag/List\nexpect \"Bag/List\" first_row 6\n"
              "click  # Bag/Level\nexpect no more\nexpect \"Bag/Level\" open true\n"
              "click  # Bag/Level\nexpect no more\nexpect \"Bag/Level\" selected 1\nexpect \"Bag/Level\" open false\n"
              "right  # Bag/Volume\nexpect no more\nexpect \"More\" open true\n"
              "click  # More/Sound\nexpect no more\nexpect \"More\" open false\nexpect \"More/Sound\" checked true\n"
              "key\nexpect \"Bag/Volume\" focused true\n"
              "click  # Bag\nexpect no more\nexpect \"Bag\" minimized true"_s)
        << text.toStdString();
    EXPECT_EQ(replay(text).line, 0) << replay(text).difference.toStdString();
    (void)test::set(*m_bag, "movable", false);
    EXPECT_TRUE(replay(text).difference.startsWith(u"x of \"Bag\": expected 153, found 100"_s));
    const QString places = recorded([&](InputRecorder& recorder) {
        mouse(MouseEvent::Kind::Move, caption);
        EXPECT_EQ(recorder.expect_here(), u"Bag"_s);
    });
    EXPECT_TRUE(places.contains(u"expect \"Bag\" minimized false\n"_s)) << places.toStdString();
    EXPECT_FALSE(places.contains(u" x "_s)) << "where it is follows the screen";
}

TEST_F(Replaying, keys_that_only_modify_others_and_what_goes_on_by_itself_are_no_input)
{
    bind(*m_volume, EVENT_SLIDER_DRAGGED, u"dragged"_s, u"print(control('Volume').value)"_s);
    const QString text = recorded([&](InputRecorder&) {
        click(middle(*m_name));
        m_view->send_key(Qt::Key_Shift, Qt::ShiftModifier);
        m_view->send_key(Qt::Key_A, Qt::ShiftModifier);
        m_view->send_text(u"A"_s, {});
        type(u"nna"_s);
        m_view->send_key(Qt::Key_Control, Qt::ControlModifier);
        m_view->send_key(Qt::Key_A, Qt::ControlModifier);
        drag(middle(*m_volume), middle(*m_volume) + QPointF(60, 0));
        m_view->send_key(Qt::Key_Control, Qt::ControlModifier);
    });
    const QStringList found = steps(text);
    EXPECT_EQ(
        found.mid(2, 4),
        (QStringList{u"type \"Anna\""_s, u"expect \"Bag/Name\" text \"Anna\""_s, u"key \"Ctrl+A\""_s, found.value(5)}))
        << text.toStdString();
    EXPECT_EQ(text.count(u"expect call \"dragged\""_s), 1) << "the last of many: " << text.toStdString();
    EXPECT_TRUE(found.back().startsWith(u"expect \"Bag/Volume\" value "_s)) << text.toStdString();
    EXPECT_EQ(replay(text).line, 0) << replay(text).difference.toStdString();
}

TEST_F(Replaying, in_which_order_it_is_told_what_came_of_an_input_is_no_matter)
{
    CDXUTControl* other = add(DXUT_CONTROL_BUTTON, u"Other"_s, {120, 10, 80, 30});
    bind(*m_use, EVENT_BUTTON_CLICKED, u"start"_s,
         u"print('started') message('hello') print('again') print('again')"_s);
    bind(*m_use, EVENT_BUTTON_LEFT_UP, u"up"_s, {});
    (void)m_scene->events().CreateEventW(other->id(), EVENT_BUTTON_LEFT_DOWN, u"start"_s);
    (void)m_scene->events().CreateEventW(other->id(), EVENT_BUTTON_CLICKED, u"start"_s);
    EXPECT_EQ(steps(recorded([&](InputRecorder&) { click(middle(*m_use)); })).mid(1).join(u';'),
              u"expect call \"up\" of \"Use\";expect call \"start\" of \"Use\";expect print \"started\";"
              "expect message \"hello\";expect print \"again\";expect print \"again\";expect no more"_s);
    const auto after_click = [&](const QPointF& place, const QString& lines) {
        return replay(u"tarn-input 1\nscreen 800 600\nclick %1 %2\n"_s.arg(place.x()).arg(place.y()) + lines);
    };
    EXPECT_EQ(after_click(middle(*m_use),
                          u"expect print \"again\"\nexpect message \"hello\"\nexpect call \"start\"\n"
                          "expect print \"started\"\nexpect call \"up\" of \"Use\"\nexpect print \"again\"\n"
                          "expect no more\n"_s)
                  .line,
              0);
    const ReplayResult more = after_click(middle(*m_use),
                                          u"expect print \"again\"\nexpect call \"start\"\nexpect call \"up\"\n"
                                          "expect message \"hello\"\nexpect print \"started\"\nexpect no more\n"_s);
    EXPECT_EQ(more.line, 9);
    EXPECT_EQ(more.difference, u"not expected: print \"again\""_s) << "only what nobody expected";
    const ReplayResult thrice = after_click(middle(*m_use), u"expect print \"again\"\n"_s.repeated(3));
    EXPECT_EQ(thrice.line, 6) << "each expectation has its own";
    EXPECT_FALSE(thrice.difference.contains(u"; print \"again\""_s)) << thrice.difference.toStdString();
    (void)m_scene->events().CreateEventW(m_use->id(), EVENT_BUTTON_LEFT_DOWN, u"fails"_s);
    (void)m_scene->functions().set_function(u"fails"_s, u"error('no')"_s);
    EXPECT_EQ(
        after_click(middle(*m_use), u"expect error \"fails\"\nexpect call \"start\"\nexpect error \"fails\" 1\n"_s)
            .line,
        6);
    EXPECT_EQ(after_click(middle(*other), u"expect call \"start\"\nexpect call \"start\" of \"Other\"\n"_s).line, 0);
    (void)m_scene->events().CreateEventW(other->id(), EVENT_BUTTON_MOUSE_LEFT, u"start"_s);
    const QString hover = u"move %1 %2\n"_s.arg(middle(*other).x()).arg(middle(*other).y());
    EXPECT_EQ(replay(u"tarn-input 1\nscreen 800 600\n"_s + hover
                     + u"click %1 %2\n"_s.arg(middle(*m_use).x()).arg(middle(*m_use).y())
                     + u"expect call \"start\"\nexpect call \"start\" of \"Other\"\nexpect call \"start\"\n"_s)
                  .line,
              7)
        << "one that says less makes room for one that says more";
}

TEST_F(Replaying, time_goes_on_in_the_script_alone)
{
    bind(*m_use, EVENT_BUTTON_MOUSE_ENTERED, u"over"_s, u"wait(5) message('slept')"_s);
    const QString head = u"tarn-input 1\nscreen 800 600\n"_s;
    EXPECT_EQ(
        replay(
            head
            + u"move 160 149\nexpect call \"over\"\nwait 4.9\nexpect no more\nwait 0.2\nexpect message \"slept\"\n"_s)
            .line,
        0);
    EXPECT_EQ(replay(head + u"move 160 149\nwait 4.9\nexpect message \"slept\"\n"_s).line, 5);
    EXPECT_EQ(replay(head + u"expect \"Bag/Nobody\" visible true\n"_s).line, 3);
    EXPECT_EQ(replay(head + u"expect \"Bag\" nothing true\n"_s).line, 3);
    EXPECT_EQ(replay(head + u"expect \"#%1\" visible true\n"_s.arg(m_bag->id())).line, 0);
}

TEST(InputScripts, that_are_wrong_or_hostile_are_refused_with_their_line)
{
    const auto refused_at = [](const QByteArray& body) {
        const auto script = parse_input_script("tarn-input 1\nscreen 8 6\n" + body);
        const QString message = script ? u"accepted"_s : script.status().message();
        return message.contains(u'3');
    };
    for (const char* line : {"click",
                             "click 1",
                             "click a b",
                             "click 1 2 3",
                             "click nan 1",
                             "click 1e999 2",
                             "wait -1",
                             "wait 1e9",
                             "wheel 1 2",
                             "drag 1 2 in 1",
                             "drag 1 2 3 in 1",
                             "drag 1 2 3 4",
                             "key \"no such key\"",
                             "key A",
                             "type \"open",
                             "type \"\\q\"",
                             "expect",
                             "expect call use",
                             "expect no",
                             "expect \"Bag\"",
                             "expect \"Bag\" visible",
                             "expect \"Bag\" x 1 2",
                             "screen 0 5",
                             "screen 99999 5",
                             "dance",
                             "seed -1",
                             "type \"\\x0\"",
                             "\"click\" 1 2"})
        EXPECT_TRUE(refused_at(line)) << line;
    EXPECT_TRUE(refused_at("type \"" + QByteArray(20'000, 'x') + "\""));
    EXPECT_TRUE(refused_at(QByteArray("type \"a\0b\"", 10)));
    EXPECT_FALSE(parse_input_script("tarn-input 1\nscreen 8 6\n" + QByteArray("wait 600\n").repeated(7)));
    EXPECT_FALSE(parse_input_script("tarn-input 1\nscreen 8 6\n" + QByteArray(200'000, '\n')));
    for (const char* text : {"", "click 1 2\n", "tarn-input 2\nscreen 8 6\n", "tarn-input 1\n",
                             "tarn-input 1\nclick 1 2\nscreen 8 6\n", "\xff\xfe"})
        EXPECT_FALSE(parse_input_script(text)) << text;
    const auto fine = parse_input_script(
        "# by hand\ntarn-input 1\r\nscreen 8 6\n\n  type \"a\\\"\\\\\\n\\x01\"  # end\n");
    ASSERT_TRUE(fine) << fine.status().message().toStdString();
    EXPECT_EQ(fine.value().steps.front().text, u"a\"\\\n\x01"_s);
    EXPECT_EQ(fine.value().steps.front().line, 5);
}

TEST_F(Replaying, the_command_ends_with_zero_one_or_two)
{
    QTemporaryDir folder;
    const QString package = folder.filePath(u"bag.tarn"_s);
    Translations& translations = m_scene->translations();
    EXPECT_TRUE(translations.add_language(u"de"_s).ok());
    for (const SeenText& text : seen_texts(core().document()))
        if (text.object == m_use)
            translations.set_text(text, u"de"_s, u"Nimm"_s);
    EXPECT_TRUE(m_scene->show_texts(u"de"_s).ok());
    EXPECT_TRUE(recorded([](auto&) {}).contains(u"\ntexts \"de\"\n"_s));
    ASSERT_TRUE(m_studio->save_file(package).ok());
    const QString script = folder.filePath(u"a.tarn-input"_s);
    const auto run = [&](const QByteArray& text, const QString& file) {
        QFile out(script);
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(text);
        out.close();
        QProcess program;
        program.start(QStringLiteral(TARN_PROGRAM),
                      QStringList{u"--lang"_s, u"en"_s, u"--replay"_s, script}
                          + (file.isEmpty() ? QStringList() : QStringList{file}));
        EXPECT_TRUE(program.waitForFinished(60'000));
        m_said = QString::fromUtf8(program.readAllStandardOutput() + program.readAllStandardError());
        return program.exitCode();
    };
    const QByteArray head = "tarn-input 1\nscene \"bag.tarn\"\nscreen 800 600\n";
    EXPECT_EQ(run(head + "expect \"Bag\" visible true\n", {}), 0) << m_said.toStdString();
    EXPECT_EQ(run(head + "click 160 149\nexpect \"Bag/Volume\" enabled true\n", {}), 1);
    EXPECT_TRUE(m_said.contains(script + u":5: "_s)) << m_said.toStdString();
    EXPECT_EQ(run(head + "texts \"de\"\nexpect \"Bag/Use\" text \"Nimm\"\n", {}), 0) << m_said.toStdString();
    EXPECT_EQ(run(head + "texts \"fr\"\n", {}), 2);
    EXPECT_TRUE(m_said.contains(u"fr"_s)) << m_said.toStdString();
    EXPECT_EQ(run(head + "jump\n", {}), 2);
    EXPECT_TRUE(m_said.contains(u"line 4"_s)) << m_said.toStdString();
    EXPECT_EQ(run(head, folder.filePath(u"none.tarn"_s)), 2);
    EXPECT_EQ(run("tarn-input 1\nscreen 8 6\n", {}), 2);
}
