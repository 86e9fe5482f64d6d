#include "app/command_line.h"

#include <gtest/gtest.h>

namespace tarn::test {

namespace {

using Action = CommandLine::Action;

CommandLine parse(const char* arguments)
{
    return parse_command_line(QString::fromUtf8(arguments).split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

TEST(CommandLine, wrong_lines_end_with_status_two_and_say_why)
{
    for (const char* wrong : {"--nonsense",
                              "--lang",
                              "--lang fr",
                              "--theme blue",
                              "--render",
                              "--render x.png",
                              "a.tarn b.tarn",
                              "--render x.png --size 0x5 a.tarn",
                              "--render x.png --size 10 a.tarn",
                              "--render x.png --size 99999x9 a.tarn",
                              "--script",
                              "--render x.png --time -1 a.tarn",
                              "--render x.png --time 2..1 a.tarn",
                              "--render x.png --time 1.. a.tarn",
                              "--render x.png --fps 0 a.tarn",
                              "--render x.png --screen 5 a.tarn",
                              "--play",
                              "--render x.png --dialog",
                              "--replay",
                              "--play a.tarn --record",
                              "--record a.tarn-input"}) {
        const CommandLine line = parse(wrong);
        EXPECT_EQ(line.action, Action::PrintAndExit) << wrong;
        EXPECT_EQ(line.status, 2) << wrong;
        EXPECT_FALSE(line.output.isEmpty()) << wrong;
    }
}

TEST(CommandLine, what_follows_a_script_belongs_to_it)
{
    const CommandLine line = parse("--lang en --script walk.lua --help -x 1");
    EXPECT_EQ(line.action, Action::Script);
    EXPECT_EQ(line.script_args, QStringList({QStringLiteral("--help"), QStringLiteral("-x"), QStringLiteral("1")}));
    EXPECT_EQ(line.language, Language::English);
}

TEST(CommandLine, renders_a_file_in_the_given_size)
{
    const CommandLine line = parse("a.tarn --render x.png --size 640x480");
    EXPECT_EQ(line.action, Action::Render);
    EXPECT_EQ(line.size, QSize(640, 480));
    EXPECT_EQ(line.file, QStringLiteral("a.tarn"));
}

TEST(CommandLine, pictures_can_be_of_a_dialog_a_screen_and_a_span_of_time)
{
    const CommandLine line = parse(
        "--render x.png --screen 800x600 --dialog Bag --timebar Intro --time 0.5..2 --fps 10 "
        "a.tarn");
    EXPECT_EQ(line.picture.screen, QSize(800, 600));
    EXPECT_EQ(line.picture.dialog, QStringLiteral("Bag"));
    EXPECT_EQ(line.picture.timebar, QStringLiteral("Intro"));
    EXPECT_EQ(line.picture.from, 0.5);
    EXPECT_EQ(line.picture.until, 2.0);
    EXPECT_EQ(line.picture.rate, 10);
    EXPECT_FALSE(parse("--render x.png --time 3 a.tarn").picture.until);
    for (const char* nowhere : {"--time 1 a.tarn", "--play a.tarn --dialog Bag",
                                "--render x.png a.tarn --timebar Intro", "--render x.png a.tarn --time 1 --fps 5"})
        EXPECT_EQ(parse(nowhere).status, 2) << nowhere;
}

TEST(CommandLine, plays_a_file_in_a_size_or_on_the_full_screen)
{
    const CommandLine line = parse("--play a.tarn --size 640x480 --fullscreen --lang zh");
    EXPECT_EQ(line.action, Action::Play);
    EXPECT_EQ(line.file, QStringLiteral("a.tarn"));
    EXPECT_EQ(line.size, QSize(640, 480));
    EXPECT_TRUE(line.full_screen);
    EXPECT_EQ(parse("--play a.tarn --record b.tarn-input").input_script, QStringLiteral("b.tarn-input"));
    const CommandLine replay = parse("--replay b.tarn-input a.tarn");
    EXPECT_EQ(replay.action, Action::Replay);
    EXPECT_EQ(replay.file, QStringLiteral("a.tarn"));
    EXPECT_EQ(replay.input_script, QStringLiteral("b.tarn-input"));
}

} // namespace

} // namespace tarn::test
