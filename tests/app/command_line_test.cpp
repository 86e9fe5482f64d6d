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
    for (const char* wrong : {"--nonsense", "--lang", "--lang fr", "--theme blue", "--render", "--render x.png",
                              "a.tarn b.tarn", "--render x.png --size 0x5 a.tarn", "--render x.png --size 10 a.tarn",
                              "--render x.png --size 99999x9 a.tarn", "--script"}) {
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

} // namespace

} // namespace tarn::test
