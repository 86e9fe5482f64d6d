#include "script_fixture.h"

#include "widgets/theme.h"

#include <QApplication>

using namespace tarn::test;

TEST_F(ScriptEditor, keeps_text_of_any_script_and_ends_lines_alike)
{
    EXPECT_EQ(edit([](CChildDlg& page) {
                  script(page).setText(u"-- 中文 שלום 😀\r\nprint('é')\n"_s);
                  click(page, 1);
              }),
              1);
    EXPECT_EQ(text(), u"-- 中文 שלום 😀\nprint('é')\n"_s);
}

TEST_F(ScriptEditor, asks_before_changes_are_lost_and_stays_open_when_they_should_not_be)
{
    EXPECT_EQ(edit([](CChildDlg& page) { click(page, 2); }), 2);
    EXPECT_EQ(m_author.questions, 0);
    m_author.refusals = 1;
    EXPECT_EQ(edit([this](CChildDlg& page) {
                  script(page).insert(u"y"_s);
                  click(page, 2);
                  EXPECT_EQ(m_author.questions, 1);
                  EXPECT_TRUE(page.isVisible());
                  EXPECT_TRUE(page.window()->windowTitle().endsWith(u'*'));
                  EXPECT_TRUE(page.window()->close());
              }),
              2);
    EXPECT_EQ(m_author.questions, 2);
    EXPECT_EQ(text(), u"x = 1"_s);
}

TEST_F(ScriptEditor, marks_a_faulty_line_until_it_is_mended)
{
    edit([](CChildDlg& page) {
        script(page).setText(u"x = 1\ny = = 2\n"_s);
        EXPECT_TRUE(QTest::qWaitFor([&] { return script(page).faulty_lines() == std::vector{1}; }));
        EXPECT_TRUE(label(page, 6612).contains(u"2"_s));
        QTest::mouseClick(page.control(6612), Qt::LeftButton);
        EXPECT_EQ(script(page).SendScintilla(QsciScintilla::SCI_GETCURRENTPOS), 6);
        script(page).setText(u"x = 1\ny = 2\n"_s);
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return script(page).faulty_lines().empty() && label(page, 6612).isEmpty(); }));
        click(page, 1);
    });
}

TEST_F(ScriptEditor, replaces_everywhere_in_one_step_of_its_undo)
{
    edit([](CChildDlg& page) {
        script(page).setText(u"ab = ab + Ab"_s);
        field(page, 6602).setText(u"ab"_s);
        field(page, 6603).setText(u"abab"_s);
        click(page, 6607);
        EXPECT_EQ(script(page).script(), u"abab = abab + abab"_s);
        script(page).undo();
        EXPECT_EQ(script(page).script(), u"ab = ab + Ab"_s);
        click(page, 1);
    });
}

TEST_F(ScriptEditor, finds_on_from_end_to_end_and_tells_which_place_it_is)
{
    edit([](CChildDlg& page) {
        script(page).setText(u"ab cab\nAB\n"_s);
        QTest::keyClick(&script(page), Qt::Key_F, Qt::ControlModifier);
        ASSERT_TRUE(field(page, 6602).hasFocus());
        type(field(page, 6602), u"ab"_s);
        const QString first = label(page, 6610);
        EXPECT_TRUE(first.contains(u"1"_s) && first.contains(u"3"_s)) << first.toStdString();
        type(field(page, 6602), u"\n\n"_s);
        EXPECT_EQ(script(page).selectedText(), u"AB"_s);
        type(field(page, 6602), u"\n"_s);
        EXPECT_EQ(label(page, 6610), first);
        QTest::keyClick(&field(page, 6602), Qt::Key_Return, Qt::ShiftModifier);
        EXPECT_EQ(script(page).selectedText(), u"AB"_s);
        click(page, 6609); // whole words
        click(page, 6605);
        click(page, 6605);
        EXPECT_EQ(script(page).selectedText(), u"AB"_s);
        field(page, 6603).setText(u"x"_s);
        click(page, 6606);
        EXPECT_EQ(script(page).script(), u"ab cab\nx\n"_s);
        EXPECT_EQ(script(page).selectedText(), u"ab"_s);
    });
}

TEST_F(ScriptEditor, closes_the_bar_before_itself)
{
    EXPECT_EQ(edit([](CChildDlg& page) {
                  click(page, 6616);
                  ASSERT_TRUE(page.control(6620)->isVisible());
                  QTest::keyClick(&field(page, 6602), Qt::Key_Escape);
                  EXPECT_FALSE(page.control(6620)->isVisible());
                  EXPECT_TRUE(page.isVisible());
                  ASSERT_TRUE(script(page).hasFocus());
                  QTest::keyClick(&script(page), Qt::Key_Escape);
                  EXPECT_FALSE(page.isVisible());
              }),
              2);
}

TEST_F(ScriptEditor, follows_the_theme_while_it_is_open)
{
    edit([](CChildDlg& page) {
        const auto colors = [&] {
            std::vector<QColor> found;
            for (int style : {QsciLexerLua::Default, QsciLexerLua::Keyword, QsciLexerLua::String})
                found.push_back(script(page).lexer()->color(style));
            found.push_back(script(page).lexer()->paper(QsciLexerLua::Default));
            return found;
        };
        const auto light = colors();
        tarn::apply_theme(*qApp, tarn::Theme::Dark);
        EXPECT_TRUE(QTest::qWaitFor([&] { return colors() != light; }));
        const auto dark = colors();
        for (std::size_t i = 0; i < light.size(); ++i)
            EXPECT_NE(light[i], dark[i]) << i;
        tarn::apply_theme(*qApp, tarn::Theme::Light);
        EXPECT_TRUE(QTest::qWaitFor([&] { return colors() == light; }));
    });
}
