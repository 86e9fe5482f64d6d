#include "script_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

QByteArray written(const CConfigScene& functions)
{
    JsonWriter writer;
    functions.write(writer, [](const IFunc&) { return true; });
    return QByteArray::fromStdString(writer.text());
}

Status read(CConfigScene& functions, const QByteArray& list)
{
    JsonText json("{\"functions\":" + list + "}", u"scene.json"_s);
    return json.each_member([&](std::string_view, JsonCursor& value) { return functions.read(value); });
}

QStringList names_of(const CConfigScene& functions)
{
    QStringList names;
    for (const FuncPtr& function : functions.functions())
        names << function->name();
    return names;
}

class ConfigSceneTest : public testing::Test {
protected:
    ConfigSceneTest() { VLCMsgIniW::set_language(Language::English); }
    FuncPtr add(const QString& name, const QString& text = {}, bool replace = true)
    {
        const FuncPtr function = IFunc::create_func(name);
        m_added = m_functions.add_function(function, replace, text);
        return function;
    }

    CConfigScene m_functions;
    Status m_added;
};

} // namespace

TEST_F(ConfigSceneTest, functions_keep_their_order_and_a_replacement_its_place)
{
    for (const char16_t* name : {u"b", u"a", u"GUI_FUNC_12_click 中"})
        add(QString::fromUtf16(name));
    const FuncPtr old = m_functions.find_function(u"a"_s);
    add(u"a"_s, u"x"_s, false);
    EXPECT_FALSE(m_added.ok());
    EXPECT_EQ(m_functions.find_function(u"a"_s), old);
    const FuncPtr fresh = add(u"a"_s, u"x"_s);
    EXPECT_EQ(m_functions.find_function(u"a"_s), fresh);
    EXPECT_EQ(names_of(m_functions).join(u','), u"b,a,GUI_FUNC_12_click 中"_s);
    EXPECT_TRUE(m_functions.add_function(fresh, true).ok());
    EXPECT_EQ(fresh->text(), u"x"_s) << "no text leaves the text as it is";
    EXPECT_TRUE(m_functions.del_function(u"b"_s));
    EXPECT_FALSE(m_functions.del_function(u"b"_s));
    EXPECT_EQ(names_of(m_functions).size(), 2);
}

TEST_F(ConfigSceneTest, every_change_is_told_once_and_only_while_the_function_is_in_the_table)
{
    int told = 0;
    m_functions.on_changed = [&] { ++told; };
    const FuncPtr function = add(u"f"_s);
    (void)function->set_text(u"return 1"_s);
    (void)function->set_text(u"return 1"_s);
    EXPECT_EQ(told, 2);
    add(u"f"_s, u"other"_s);
    (void)function->set_text(u"no longer its own"_s);
    m_functions.del_function(u"f"_s);
    m_functions.clear();
    EXPECT_EQ(told, 4);
    EXPECT_EQ(m_functions.changes(), 4u);
}

TEST_F(ConfigSceneTest, a_function_belongs_to_one_table_and_outlives_it)
{
    const FuncPtr function = IFunc::create_func(u"f"_s);
    {
        CConfigScene other;
        EXPECT_TRUE(other.add_function(function, true).ok());
        EXPECT_FALSE(m_functions.add_function(function, true).ok());
    }
    EXPECT_TRUE(function->set_text(u"x"_s).ok());
    EXPECT_TRUE(m_functions.add_function(function, true).ok());
}

TEST_F(ConfigSceneTest, limits_hold_for_names_and_texts)
{
    add(QString());
    EXPECT_FALSE(m_added.ok());
    add(u"x"_s.repeated(301));
    EXPECT_FALSE(m_added.ok());
    add(u"x"_s.repeated(300), u"y"_s.repeated(1024 * 1024));
    EXPECT_TRUE(m_added.ok());
    add(u"long"_s, u"y"_s.repeated(1024 * 1024 + 1));
    EXPECT_FALSE(m_added.ok());
    EXPECT_EQ(m_functions.functions().size(), 1u);
}

TEST_F(ConfigSceneTest, the_table_reads_back_and_writes_the_same_bytes)
{
    add(u"b"_s, u"local a = \"x\"\n\tprint(a)"_s);
    add(u"empty"_s);
    add(u"name: 中\n\"quoted\""_s, u"-- \\"_s);
    const QByteArray bytes = written(m_functions);
    EXPECT_EQ(bytes.count('\n'), 4);
    CConfigScene other;
    int told = 0;
    other.on_changed = [&] { ++told; };
    ASSERT_TRUE(read(other, bytes).ok());
    EXPECT_EQ(told, 0) << "what was loaded is no change by the author";
    EXPECT_EQ(written(other), bytes);
    EXPECT_EQ(other.find_function(u"empty"_s)->text(), QString());
    EXPECT_TRUE(other.find_function(u"b"_s)->set_text(u"new"_s).ok());
    EXPECT_EQ(told, 1);

    const QByteArray newer = "[\n{\"name\":\"f\",\"folded\":{\"a\":[1]}}\n]";
    ASSERT_TRUE(read(other, newer).ok());
    EXPECT_EQ(written(other), newer) << "members of later versions are kept";
    EXPECT_EQ(written(CConfigScene()), "[]");
}

TEST_F(ConfigSceneTest, halves_of_characters_do_not_make_names_that_cannot_be_read_back)
{
    add(QString(QChar(0xD800)));
    add(QString(QChar(0xD801)), {}, false);
    EXPECT_FALSE(m_added.ok()) << "saved, both would have one name";
}

TEST_F(ConfigSceneTest, a_hostile_list_is_refused_with_its_line_and_changes_nothing)
{
    add(u"kept"_s, u"text"_s);
    QByteArray many = "[";
    for (int i = 0; i <= CConfigScene::max_functions; ++i)
        many += QByteArray(i ? "," : "") + "{\"name\":\"f" + QByteArray::number(i) + "\"}";
    const std::pair<QByteArray, QString> cases[] = {
        {"[\n{\"name\":\"a\"},\n{\"name\":\"a\"}\n]", u"named \"a\" already"_s},
        {"[\n{\"text\":\"a\"}\n]", u"needs a name"_s},
        {"[{\"name\":1}]", u"a text is expected"_s},
        {"[{\"name\":\"a\",\"text\":null}]", u"a text is expected"_s},
        {"[7]", u"an object"_s},
        {"{}", u"a list"_s},
        {"[{\"name\":\"" + QByteArray(301, 'x') + "\"}]", u"too long"_s},
        {"[{\"name\":\"a\",\"text\":\"" + QByteArray(1024 * 1024 + 1, 'x') + "\"}]", u"too long"_s},
        {"[{\"name\":\"a\",\"x\":" + QByteArray(5000, '[') + QByteArray(5000, ']') + "}]", u"line 1"_s},
        {many + "]", u"too many script functions"_s},
        {"[{\"name\":\"a\"}", u"scene.json"_s},
    };
    for (const auto& [list, message] : cases) {
        const auto status = read(m_functions, list);
        EXPECT_FALSE(status.ok());
        EXPECT_TRUE(status.message().contains(message)) << status.message().toStdString();
        EXPECT_TRUE(status.message().contains(u"scene.json, line "_s)) << status.message().toStdString();
    }
    EXPECT_EQ(names_of(m_functions), QStringList{u"kept"_s});
}
