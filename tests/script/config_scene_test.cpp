#include "script_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

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
        const FuncPtr function = IFunc::create_func(m_functions, name);
        m_added = m_functions.add_function(function, replace, text);
        return function;
    }

    Document m_document;
    CConfigScene m_functions{m_document};
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

TEST_F(ConfigSceneTest, every_change_counts_and_leaves_the_document_changed)
{
    Journal& journal = m_document.journal();
    const auto counts = [&](const std::function<void()>& change) {
        journal.mark_saved();
        const quint64 before = m_functions.changes();
        change();
        return m_functions.changes() != before && !journal.is_saved();
    };
    FuncPtr function;
    EXPECT_TRUE(counts([&] { function = add(u"f"_s); }));
    EXPECT_TRUE(counts([&] { (void)function->set_text(u"return 1"_s); }));
    EXPECT_FALSE(counts([&] { (void)function->set_text(u"return 1"_s); }));
    EXPECT_TRUE(counts([&] { add(u"f"_s, u"other"_s); }));
    EXPECT_TRUE(counts([&] { m_functions.del_function(u"f"_s); }));
    EXPECT_FALSE(journal.can_undo()) << "functions are not undone";
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

TEST_F(ConfigSceneTest, halves_of_characters_do_not_make_names_that_cannot_be_read_back)
{
    add(QString(QChar(0xD800)));
    add(QString(QChar(0xD801)), {}, false);
    EXPECT_FALSE(m_added.ok()) << "saved, both would have one name";
}
