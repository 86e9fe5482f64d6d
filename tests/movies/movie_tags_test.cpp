#include "movies/movie_tags.h"
#include "support/movie_writer.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

using namespace tarn;
using namespace tarn::test;

TEST(MovieTags, tell_what_the_player_lacks_packed_or_not)
{
    MovieWriter plain;
    plain.background(Qt::white).shape(1, {0, 0, 20, 20}, Qt::red).clip(2, 1).place(2, 1, {0, 0});
    MovieWriter rich = plain;
    rich.place_filtered(1, 3, {0, 0}).tag(14, "sound").tag(60, "video");
    for (const bool packed : {false, true}) {
        const MovieLacks none = read_movie_tags(plain.show_frame().bytes(packed));
        EXPECT_FALSE(none.filters || none.sound || none.video || none.packing);
        const MovieLacks all = read_movie_tags(rich.show_frame().bytes(packed));
        EXPECT_TRUE(all.filters && all.sound && all.video);
    }
    // What scripts do, in both of their languages.
    const auto script = [](const MovieScript& text) { return read_movie_tags(MovieWriter().script(text).bytes(true)); };
    EXPECT_TRUE(script(MovieScript().draw_bitmap({9, 9}, QStringLiteral("box"))).bitmaps);
    EXPECT_TRUE(script(MovieScript().blur(QStringLiteral("box"))).filters);
    EXPECT_FALSE(script(MovieScript().push(QStringLiteral("BitmapData")).push(QStringLiteral("withdraw"))).bitmaps);
    EXPECT_TRUE(read_movie_tags(MovieWriter().tag(82, "....\x0a\x42itmapData\x04\x64raw").bytes()).bitmaps);
    // Within a clip, too.
    const QByteArray inner("\x02\x00\x01\x00\x84\x11\x06\x01\x01\x00", 10);
    EXPECT_TRUE(read_movie_tags(MovieWriter().tag(39, inner).bytes()).filters);
    EXPECT_TRUE(read_movie_tags("ZWS\x0d rest of it").packing);
}

TEST(MovieTags, of_damaged_files_are_read_as_far_as_they_go)
{
    const QByteArray whole = moving_movie();
    QRandomGenerator random(3);
    for (int round = 0; round < 500; ++round) {
        QByteArray damaged = round % 2 ? whole : "CWS" + QByteArray(5, '\x08') + qCompress(whole.mid(8)).mid(4);
        damaged.truncate(random.bounded(int(damaged.size())));
        for (int i = 0; i < 5 && !damaged.isEmpty(); ++i)
            damaged[random.bounded(int(damaged.size()))] = char(random.bounded(256));
        (void)read_movie_tags(damaged);
    }
    // A small file that would unpack to very much.
    const QByteArray bomb = "CWS" + QByteArray(5, '\x08') + qCompress(QByteArray(80 << 20, '\0')).mid(4);
    (void)read_movie_tags(bomb);
}
