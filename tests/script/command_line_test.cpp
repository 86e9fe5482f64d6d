#include "script/command_line.h"

#include "support/printing.h"

#include <gtest/gtest.h>

using namespace tarn;
using namespace Qt::StringLiterals;

TEST(CommandLine, is_taken_apart_and_put_together)
{
    struct Case {
        QString line, call, parameters;
        bool is_complete;
        QString names;
    };
    const Case cases[] = {
        {u""_s, u""_s, u""_s, true, u""_s},
        {u" blink "_s, u"blink"_s, u""_s, true, u""_s},
        {u"blink ( \"a, b)\" , 'it\\'s',speed * 2)"_s, u"blink"_s, u"\"a, b)\"|'it\\'s'|speed * 2"_s, true, u"speed"_s},
        {u"blink 1, speed 'two words'"_s, u"blink"_s, u"1|speed|'two words'"_s, true, u"speed"_s},
        {u"f({1, x}, g(y, z), w[1])"_s, u"f"_s, u"{1, x}|g(y, z)|w[1]"_s, true, u"x y z w"_s},
        {u"control(\"A (1)\") : set('text', 1e5 .. life..nil)"_s, u"control(\"A (1)\") : set"_s,
         u"'text'|1e5 .. life..nil"_s, true, u"life"_s},
        {u"f(math.floor(a), b.c, not d, e:f())"_s, u"f"_s, u"math.floor(a)|b.c|not d|e:f()"_s, true, u"a d"_s},
        {u"f(\"open"_s, u"f"_s, u"\"open"_s, false, u""_s},
        {u"f(a"_s, u"f"_s, u"a"_s, false, u"a"_s},
        {u"f(a) or 1"_s, u"f"_s, u"a"_s, false, u"a"_s},
        {u"f(\"\\\")"_s, u"f"_s, u"\"\\\")"_s, false, u""_s},
    };
    for (const Case& c : cases) {
        const CommandLine line = CommandLine::parse(c.line);
        EXPECT_EQ(line.call, c.call) << c.line.toStdString();
        EXPECT_EQ(line.parameters.join(u'|'), c.parameters) << c.line.toStdString();
        EXPECT_EQ(line.is_complete, c.is_complete) << c.line.toStdString();
        EXPECT_EQ(line.names().join(u' '), c.names) << c.line.toStdString();
        if (c.is_complete) {
            EXPECT_EQ(CommandLine::parse(line.text()).text(), line.text());
        }
    }
}

TEST(CommandLine, becomes_a_function_of_lua_whatever_its_variables_are_called)
{
    const CommandLine line = CommandLine::parse(u"show(生命, 'end', end_2)"_s);
    EXPECT_EQ(line.lua({u"生命"_s, u"end_2"_s}, true),
              u"local v0_, v1_ = ... return call(\"show\", v0_, 'end', v1_)"_s);
    EXPECT_EQ(CommandLine::parse(u"print(x)"_s).lua({}, false), u"return print(x)"_s);
    EXPECT_EQ(lua_quoted(u"a\"\\\n"_s), u"\"a\\\"\\\\\\n\""_s);
}
