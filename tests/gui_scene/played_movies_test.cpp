#include "gui_core/dxut_media.h"
#include "gui_draw/gui_painter.h"
#include "gui_scene/scene_movies.h"
#include "movies/movie_tools.h"
#include "script/script_log.h"
#include "script/script_runtime.h"
#include "support/gui_fixture.h"
#include "support/movie_writer.h"
#include "support/run_until.h"
#include "support/scene_fixture.h"

#include <QPainter>

using namespace tarn;
using namespace tarn::test;

namespace {

/// A box that is moved to the right by a click on a button, the key A, or the call "move_to" with a place; each tells it.
QByteArray answering_movie()
{
    MovieWriter movie;
    movie.background(Qt::white).shape(1, {0, 0, 20, 20}, Qt::red).clip(2, 1).place(2, 1, {0, 0}, u"box"_s);
    const auto move = MovieScript().set_property(u"box"_s, 0, 60);
    movie.shape(3, {0, 0, 40, 20}, Qt::blue);
    movie.button(4, 3, MovieScript(move).fs_command(u"told"_s, u"left"_s)).place(4, 5, {10, 50});
    movie.button(5, 3, MovieScript(move).call_out(u"told"_s, {u"by"_s, u"key"_s}), 'a').place(5, 6, {70, 50});
    movie.script(
        MovieScript()
            .offer(u"move_to"_s,
                   MovieScript().set_x_from(u"box"_s, u"value"_s).call_out_with_variable(u"told"_s, u"value"_s))
            .call_out(u"unheard"_s)
            .stop());
    return movie.show_frame().bytes();
}

class PlayedInScene : public SceneTest {
protected:
    void SetUp() override
    {
        if (const auto tools = MovieTools::find(); !tools)
            GTEST_SKIP() << tools.status().message().toStdString();
        m_home = dialog({0, 0, 300, 200});
        m_movie = static_cast<CDXUTFlash*>(control(DXUT_CONTROL_FLASH, m_home, {20, 30, 120, 90}, u"Movie"_s));
        show(answering_movie());
        (void)set(*m_movie, "callbacks", QStringList{u"Movie_told"_s});
        (void)m_scene.functions().set_function(u"Movie_told"_s,
                                               u"local c, name, a, b = ...\nprint(c.name, name, a, b)"_s);
        (void)m_scene.functions().set_function(u"push"_s, u"control('Movie'):call('move_to', 60)"_s);
        core().set_screen_size({640, 480});
    }
    void show(const QByteArray& file)
    {
        core().document().edit_files([&](auto& files) { files.insert(u"movies/m.swf"_s, file); });
        (void)set(*m_movie, "source", u"m.swf"_s);
    }
    QImage drawn()
    {
        m_scene.movies().update();
        QImage picture(640, 480, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::green);
        QPainter painter(&picture);
        m_painter.paint(painter, core(), QRectF(0, 0, 640, 480), 1);
        return picture;
    }
    /// A place of the movie on the screen.
    QPoint at(QPoint place) const { return m_movie->screen_rect().topLeft().toPoint() + place; }
    bool shows(QPoint place, QColor color, int milliseconds = 30000)
    {
        return run_until([&] { return drawn().pixelColor(at(place)) == color; }, milliseconds);
    }
    void mouse(MouseEvent::Kind kind, QPoint place)
    {
        const bool moves = kind == MouseEvent::Kind::Move;
        m_world.mouse_tool()->mouse({kind, QPointF(at(place)), moves ? Qt::NoButton : Qt::LeftButton, {}});
    }
    void click(QPoint place)
    {
        for (const auto kind : {MouseEvent::Kind::Move, MouseEvent::Kind::Press, MouseEvent::Kind::Release})
            mouse(kind, place);
    }
    QStringList log()
    {
        QStringList lines;
        for (const ScriptLogEntry& entry : m_world.script_log().entries())
            lines << entry.text;
        return lines;
    }

    CDXUTDialog* m_home = nullptr;
    CDXUTFlash* m_movie = nullptr;
    GuiPainter m_painter;
};

constexpr QPoint begin{5, 5};
constexpr QPoint moved{65, 5};
constexpr QPoint blue_button{15, 55};

} // namespace

TEST_F(PlayedInScene, movies_show_their_first_frame_where_they_are_edited_and_take_no_mouse_there)
{
    ASSERT_TRUE(shows(begin, Qt::red));
    EXPECT_FALSE(m_movie->is_interactive());
    (void)set(*m_movie, "translucency", qint64(50));
    (void)set(*m_movie, "transparent", true);
    ASSERT_TRUE(run_until([&] { return drawn().pixelColor(at({100, 10})) != QColor(Qt::white); }));
    EXPECT_TRUE(run_until([&] {
        const QColor box = drawn().pixelColor(at(begin));
        return box.red() > 100 && box != QColor(Qt::red);
    })) << "half of what is behind shows through";
}

TEST_F(PlayedInScene, movies_take_mouse_and_keys_as_their_flags_say_and_run_their_callbacks)
{
    (void)set(*m_movie, "keyboard_input", true);
    m_scene.play(true);
    ASSERT_TRUE(shows(blue_button, Qt::blue));
    run_for(200);
    click(blue_button);
    EXPECT_TRUE(shows(moved, Qt::red));
    EXPECT_TRUE(run_until([&] { return log().filter(u"left"_s).size() == 1; }, 5000)) << log().join(u'|').toStdString();
    EXPECT_EQ(log().filter(u"Movie"_s).value(0), u"Movie\ttold\tleft\tnil"_s);
    m_world.mouse_tool()->key(Qt::Key_A, {});
    m_world.mouse_tool()->text(u"a"_s, {});
    EXPECT_TRUE(run_until([&] { return log().contains(u"Movie\ttold\tby\tkey"_s); }, 5000));
    EXPECT_EQ(log().filter(u"no callback"_s).size() + log().filter(u"没有这样的回调"_s).size(), 1);

    m_scene.play(false);
    (void)set(*m_movie, "keyboard_input", false);
    (void)set(*m_movie, "mouse_input", false);
    m_scene.play(true);
    ASSERT_TRUE(shows(begin, Qt::red)) << "it begins anew";
    run_for(200);
    click(blue_button);
    m_world.mouse_tool()->text(u"a"_s, {});
    run_for(300);
    EXPECT_FALSE(shows(moved, Qt::red, 300));
}

TEST_F(PlayedInScene, scripts_call_into_movies_that_play)
{
    EXPECT_TRUE(m_world.scripts().call(u"push"_s, {}).error.has_value()) << "nothing plays yet";
    m_scene.play(true);
    ASSERT_TRUE(shows(begin, Qt::red));
    run_for(200);
    EXPECT_FALSE(m_world.scripts().call(u"push"_s, {}).error.has_value());
    EXPECT_TRUE(shows(moved, Qt::red));
    EXPECT_TRUE(run_until([&] { return log().contains(u"Movie\ttold\t60\tnil"_s); }, 5000))
        << log().join(u'|').toStdString();
}

TEST_F(PlayedInScene, hidden_movies_cost_nothing_and_begin_anew_when_they_are_to)
{
    show(moving_movie({120, 90}, 300, 30));
    m_scene.play(true);
    int changes = 0;
    m_scene.movies().on_redraw = [&] { ++changes; };
    ASSERT_TRUE(run_until([&] { return drawn(), changes > 10; }));
    const auto hides = [&](const std::function<void(bool)>& hide) {
        hide(true);
        (void)drawn();
        run_for(300);
        changes = 0;
        run_for(400);
        EXPECT_EQ(changes, 0);
        hide(false);
        EXPECT_TRUE(run_until([&] { return drawn(), changes > 2; }));
    };
    const ShownWrites writes(core().document());
    hides([&](bool on) { m_home->SetVisible(!on); });
    hides([&](bool on) { m_movie->SetVisible(!on); });
    hides([&](bool on) { m_home->set_minimized(on); });
    hides([&](bool on) { m_home->SetLocation(on ? 5000 : 0, 0); });
}

TEST_F(PlayedInScene, a_movie_that_cannot_be_played_leaves_a_card_that_says_why)
{
    show(MovieWriter().background(Qt::white).script(MovieScript().loop_forever()).show_frame().bytes());
    (void)drawn();
    const QString before = m_movie->description();
    ASSERT_TRUE(run_until([&] { return drawn(), m_movie->description() != before; }));
    EXPECT_TRUE(m_movie->description().startsWith(before));
    show(answering_movie());
    (void)set(*m_movie, "transparent", true);
    EXPECT_TRUE(shows(begin, Qt::red)) << "another movie in its place plays";
}
