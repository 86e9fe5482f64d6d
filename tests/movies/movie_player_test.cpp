#include "movies_fixture.h"
#include "support/test_font.h"

using namespace tarn;
using namespace tarn::test;

namespace {

constexpr QPoint first_place{5, 15}; ///< where the square of moving_movie() begins

/// A red box that a click on the blue button, the key A and a call from outside move to 60.
QByteArray answering_movie()
{
    MovieWriter movie;
    movie.background(Qt::white).shape(1, {0, 0, 20, 20}, Qt::red).clip(2, 1).place(2, 1, {0, 0}, u"box"_s);
    const auto move = MovieScript().set_property(u"box"_s, 0, 60);
    movie.shape(3, {0, 0, 40, 20}, Qt::blue);
    movie.button(4, 3, MovieScript(move).fs_command(u"clicked"_s, u"left"_s)).place(4, 5, {10, 50});
    movie.button(5, 3, MovieScript(move).fs_command(u"typed"_s, u"a"_s), 'a').place(5, 6, {70, 50});
    movie.script(
        MovieScript()
            .offer(u"move_to"_s,
                   MovieScript().set_x_from(u"box"_s, u"value"_s).call_out_with_variable(u"moved"_s, u"value"_s))
            .stop());
    return movie.show_frame().bytes(true);
}

class PlayedMovie : public PlayedMovies {};

} // namespace

TEST_F(PlayedMovie, shows_its_first_frame_and_then_costs_nothing)
{
    const auto still = open(moving_movie(), false);
    ASSERT_TRUE(shows(still)) << m_player.failure(still).toStdString();
    ASSERT_TRUE(becomes(still, first_place, Qt::red));
    run_for(300);
    int changes = 0;
    m_player.on_changed = [&](auto) { ++changes; };
    run_for(500);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(color_at(still, first_place), QColor(Qt::red)) << "it did not play on";
    m_player.set_size(still, {240, 180});
    EXPECT_TRUE(run_until([&] { return m_player.picture(still).size() == QSize(240, 180); }));
}

TEST_F(PlayedMovie, plays_while_it_is_seen_and_begins_anew_when_it_is_started_again)
{
    const auto movie = open(moving_movie({120, 90}, 60, 12));
    ASSERT_TRUE(becomes(movie, first_place, Qt::red));
    ASSERT_TRUE(becomes(movie, {60, 15}, Qt::red));
    m_player.set_seen(movie, false);
    run_for(200);
    const QImage before = m_player.picture(movie);
    run_for(400);
    EXPECT_EQ(m_player.picture(movie), before);
    m_player.start(movie, true);
    m_player.set_seen(movie, true);
    EXPECT_TRUE(becomes(movie, first_place, Qt::red));
}

TEST_F(PlayedMovie, takes_the_mouse_keys_and_calls_and_tells_what_it_calls)
{
    for (const int way : {0, 1, 2}) {
        m_events.clear();
        const auto movie = open(answering_movie());
        ASSERT_TRUE(becomes(movie, {15, 55}, Qt::blue));
        run_for(100);
        if (way == 0)
            for (const char* what : {"enter", "move", "down", "up"})
                m_player.ask(movie).mouse(what, {15, 55}, QByteArray(what) == "down");
        else if (way == 1)
            m_player.ask(movie).key(true, u"a"_s, u"KeyA"_s);
        else
            m_player.ask(movie).call(7, u"move_to"_s, {Value(qint64(60))});
        EXPECT_TRUE(becomes(movie, {65, 5}, Qt::red)) << way;
        const QStringList wanted{u"clicked(left)"_s, u"typed(a)"_s, u"moved(60)"_s};
        EXPECT_EQ(called(), QStringList{wanted[way]});
        m_player.close(movie);
    }
}

TEST_F(PlayedMovie, stops_runs_on_and_goes_to_a_frame)
{
    const auto movie = open(moving_movie({120, 90}, 11, 10));
    ASSERT_TRUE(becomes(movie, {25, 15}, Qt::red));
    m_player.ask(movie).run(false);
    m_player.ask(movie).go_to_frame(9); // 80 pixels to the right
    EXPECT_TRUE(becomes(movie, {85, 15}, Qt::red));
    run_for(500);
    EXPECT_EQ(color_at(movie, {85, 15}), QColor(Qt::red)) << "it stands there";
    m_player.ask(movie).go_to_frame(2);
    EXPECT_TRUE(becomes(movie, {15, 15}, Qt::red));
    m_player.ask(movie).run(true);
    EXPECT_TRUE(becomes(movie, {95, 15}, Qt::red));
}

TEST_F(PlayedMovie, is_drawn_as_its_setup_says)
{
    const QByteArray file = MovieWriter()
                                .background(Qt::white)
                                .shape(1, {0, 0, 20, 20}, Qt::red)
                                .place(1, 1, {0, 0})
                                .show_frame()
                                .bytes();
    for (const bool transparent : {false, true})
        for (const bool keep_size : {false, true}) {
            const auto movie = m_player.open({.file = file, .transparent = transparent, .keep_size = keep_size});
            m_player.set_size(movie, {240, 180});
            m_player.set_seen(movie, true);
            ASSERT_TRUE(shows(movie));
            EXPECT_TRUE(becomes(movie, {5, 5}, Qt::red));
            EXPECT_EQ(m_player.picture(movie).size(), QSize(240, 180));
            EXPECT_EQ(color_at(movie, {30, 30}) == QColor(Qt::red), !keep_size);
            EXPECT_EQ(color_at(movie, {200, 150}).alpha(), transparent ? 0 : 255);
        }
}

TEST_F(PlayedMovie, writes_in_the_fonts_that_were_handed_in)
{
    TestFont font;
    m_player.set_fonts({{font.family, font.bytes()}});
    const QByteArray file = MovieWriter({200, 60})
                                .background(Qt::white)
                                .text(1, {0, 0, 200, 60}, u"AAAA"_s, font.family, 40)
                                .place(1, 1, {0, 0})
                                .show_frame()
                                .bytes();
    const auto movie = open(file, false, {200, 60});
    ASSERT_TRUE(shows(movie));
    run_for(500);
    int black = 0; // of a font of squares nearly all of the letters' area
    for (int x = 0; x < 200; ++x)
        for (int y = 0; y < 60; ++y)
            black += color_at(movie, {x, y}).lightness() < 50;
    EXPECT_GT(black, 2500);
}

TEST_F(PlayedMovie, beyond_the_dozen_waits_until_others_are_closed_or_hidden)
{
    std::vector<MoviePlayer::Id> movies;
    for (int i = 0; i < MoviePlayer::most_movies + 2; ++i)
        movies.push_back(open(moving_movie()));
    for (int i = 0; i < MoviePlayer::most_movies; ++i)
        EXPECT_TRUE(run_until([&] { return !m_player.picture(movies[std::size_t(i)]).isNull(); }));
    EXPECT_TRUE(m_player.picture(movies.back()).isNull());
    EXPECT_FALSE(m_player.failure(movies.back()).isEmpty());
    m_player.set_seen(movies[0], false);
    m_player.set_seen(movies[1], false);
    EXPECT_TRUE(run_until([&] { return !m_player.picture(movies.back()).isNull(); }));
    // Of those that only show their first frame, all do.
    std::vector<MoviePlayer::Id> still;
    for (const auto id : movies)
        m_player.close(id);
    for (int i = 0; i < 30; ++i)
        still.push_back(open(moving_movie(), false));
    for (const auto id : still)
        EXPECT_TRUE(shows(id));
}

TEST_F(PlayedMovie, lets_the_helper_end_when_none_was_seen_for_a_while_and_starts_it_again)
{
    MoviePlayer player({.idle = 200});
    const auto movie = player.open({.file = moving_movie()});
    run_for(100);
    EXPECT_FALSE(player.is_running()) << "nothing is to be seen";
    player.set_size(movie, {120, 90});
    player.set_seen(movie, true);
    ASSERT_TRUE(run_until([&] { return !player.picture(movie).isNull(); }));
    EXPECT_TRUE(run_until([&] { return !player.is_running(); })) << "its first frame is all it shows";
    player.start(movie, true);
    EXPECT_TRUE(run_until([&] { return player.starts() == 2; }));
}
