#include "core/language.h"
#include "frame/lua_text.h"
#include "frame/script_words.h"
#include "script/config_scene.h"
#include "script/script_runtime.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using tarn::ScriptType;
using tarn::ScriptWords;

std::vector<tarn::ScriptVerb> verbs()
{
    return {{"show",
             {{"name", ScriptType::Text, {u"名称", u"which"}}, {"modal", ScriptType::Bool, {}, true}},
             {u"显示", u"shows it"}},
            {.name = "tell", .more = true},
            {.name = "set_text", .parameters = {{"text", ScriptType::Text}}, .of = "control"},
            {.name = "set_text", .parameters = {{"line", ScriptType::Integer}}, .of = "list"}};
}

class ScriptWordsTest : public testing::Test {
protected:
    ScriptWordsTest() { VLCMsgIniW::set_language(tarn::Language::English); }
    ~ScriptWordsTest() override { VLCMsgIniW::set_language(tarn::Language::Chinese); }

    /// `text` has a | where the cursor is.
    QString offered(QString text) const
    {
        const auto at = text.indexOf(u'|');
        return m_words.offer(text.remove(at, 1), at).words.join(u' ');
    }
    /// The first line of the tip, with the stressed part in <>.
    QString tip(QString text) const
    {
        const auto at = text.indexOf(u'|');
        auto tip = m_words.call_tip(text.remove(at, 1), at);
        if (!tip)
            return {};
        if (tip->begin != tip->end)
            tip->text.insert(tip->end, u'>').insert(tip->begin, u'<');
        return tip->text.section(u'\n', 0, 0);
    }

    ScriptWords m_words{verbs(),
                        {u"visible"_s, u"text"_s},
                        {u"ipairs"_s, u"string"_s, u"string.rep"_s},
                        {{u"show"_s, {u"Start"_s, u"开始 1"_s, u"stop \"x"_s}}}};
};

} // namespace

TEST_F(ScriptWordsTest, offers_what_can_stand_after_dots_and_colons)
{
    EXPECT_EQ(offered(u"a:|"_s), u"set_text"_s);
    EXPECT_EQ(offered(u"f(a). |"_s), u"text visible"_s);
    EXPECT_EQ(offered(u"a.own = 1\nb.o|"_s), u"own"_s);
    EXPECT_EQ(offered(u"string.|"_s), u"rep"_s);
    // Neither is a member: labels and joined texts.
    EXPECT_EQ(offered(u"::t|"_s), u"tell then true"_s);
    EXPECT_EQ(offered(u"a..sh|"_s), u"show"_s);
}

TEST_F(ScriptWordsTest, offers_luas_words_and_the_texts_own_names_in_any_case)
{
    EXPECT_EQ(offered(u"local Ready, fence = 1\nRE|"_s), u"Ready repeat return"_s);
    EXPECT_EQ(offered(u"fe|\nlocal fence, feather"_s), u"feather fence"_s);
    EXPECT_EQ(offered(u"IP|"_s), u"ipairs"_s);
    // Not the word that is typed itself, nor what only stands in a comment.
    EXPECT_EQ(offered(u"zeb| -- zebra"_s), QString());
}

TEST_F(ScriptWordsTest, offers_nothing_in_texts_comments_and_numbers)
{
    for (const auto& text : {u"x = 'sh|"_s, u"x = \"a\\\" sh|\""_s, u"-- sh|"_s, u"--[[ a\nsh|\n]]"_s, u"[==[ ]] sh|"_s,
                             u"0xsh|"_s, u"1.|"_s})
        EXPECT_EQ(offered(text), QString()) << text.toStdString();
    EXPECT_EQ(offered(u"--[[ a ]] sh|"_s), u"show"_s);
}

TEST_F(ScriptWordsTest, offers_names_between_the_quotes_of_a_verb_that_is_told_one)
{
    EXPECT_EQ(offered(u"show(\"st|"_s), u"Start stop \"x"_s);
    EXPECT_EQ(offered(u"a = show('开|"_s), u"开始 1"_s);
    EXPECT_EQ(offered(u"show(\"开始 |\")"_s), u"开始 1"_s);
    for (const auto& text : {u"tell(\"|"_s, u"a.show(\"|"_s, u"show(1, \"|"_s, u"show[\"|"_s, u"show([[|"_s, u"\"|"_s})
        EXPECT_EQ(offered(text), QString()) << text.toStdString();
}

TEST_F(ScriptWordsTest, stresses_the_parameter_that_is_typed)
{
    EXPECT_EQ(tip(u"show(|"_s), u"show(<name>, [modal])"_s);
    EXPECT_EQ(tip(u"show('a, (b', {1, 2, f(3, 4)}|)"_s), u"show(name, <[modal]>)"_s);
    EXPECT_EQ(tip(u"show((1 + |"_s), u"show(<name>, [modal])"_s);
    EXPECT_EQ(tip(u"tell(1, 2, |"_s), u"tell(<...>)"_s);
    EXPECT_EQ(tip(u"a:set_text(|"_s), u"control:set_text(<text>)"_s);
    EXPECT_EQ(tip(u"show(1, 2, |"_s), u"show(name, [modal])"_s);
    for (const auto& text : {u"show('a')|"_s, u"set_text(|"_s, u"a.show(|"_s, u"show(f(|"_s, u"-- show(|"_s})
        EXPECT_EQ(tip(text), QString()) << text.toStdString();
}

TEST_F(ScriptWordsTest, explains_verbs_in_the_programs_language)
{
    EXPECT_EQ(m_words.name_tip(u"show"_s, 2)->text, u"show(name, [modal])\nshows it\n  name - which"_s);
    VLCMsgIniW::set_language(tarn::Language::Chinese);
    EXPECT_EQ(m_words.name_tip(u"show"_s, 2)->text, u"show(name, [modal])\n显示\n  name - 名称"_s);
    EXPECT_EQ(m_words.name_tip(u"a:set_text"_s, 2)->text, u"control:set_text(text)\nlist:set_text(line)"_s);
}

TEST(LuaText, knows_which_lines_leave_a_block_open_and_where_its_end_belongs)
{
    for (const auto& text : {u"if a then"_s, u"x = function(a) -- end"_s, u"t = {"_s, u"f(function()"_s, u"else"_s})
        EXPECT_TRUE(tarn::lua_opens_block(text)) << text.toStdString();
    for (const auto& text : {u"if a then b() end"_s, u"x = 'then'"_s, u"-- do"_s, u"while a do\nb()"_s, u""_s})
        EXPECT_FALSE(tarn::lua_opens_block(text)) << text.toStdString();

    EXPECT_EQ(tarn::lua_block_begin(u"do\n  if a then\n  else\n  end\n  end"_s), 0);
    EXPECT_EQ(tarn::lua_block_begin(u"repeat\n  t = {\n  }"_s), 13);
    for (const auto& text : {u"if a then b() end"_s, u"end"_s, u"do\n  -- end"_s, u"do\n  ending"_s, u"do\n  end "_s})
        EXPECT_EQ(tarn::lua_block_begin(text), -1) << text.toStdString();
}

TEST(LuaText, offers_only_what_the_sandbox_has)
{
    const QStringList library = tarn::ScriptRuntime::library();
    for (const auto& name : {u"pairs"_s, u"string.rep"_s, u"math.pi"_s, u"coroutine.wrap"_s, u"utf8.len"_s})
        EXPECT_TRUE(library.contains(name)) << name.toStdString();
    for (const auto& name : {u"io"_s, u"os"_s, u"load"_s, u"string.dump"_s, u"_VERSION.rep"_s})
        EXPECT_FALSE(library.contains(name)) << name.toStdString();
}
