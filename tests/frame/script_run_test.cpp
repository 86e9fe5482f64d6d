#include "script_fixture.h"

using namespace tarn::test;

namespace {

constexpr int run = 6614;
constexpr int stop = 6617;

/// The scene keeps count of the steps of undo that runs open.
class ScriptRunTest : public ScriptEditor {
protected:
    ScriptRunTest()
    {
        m_world.begin_edit = [this](const QString&) {
            ++m_begun;
            return std::shared_ptr<void>(&m_ended, [](int* ended) { ++*ended; });
        };
    }
    static bool can_stop(CChildDlg& page) { return page.control(stop)->isEnabled(); }

    int m_begun = 0;
    int m_ended = 0;
};

} // namespace

TEST_F(ScriptRunTest, RunsTheTextAsItStandsAndStoresNothingByIt)
{
    int changes = 0;
    m_world.config_scene().on_changed = [&] { ++changes; };
    edit([](CChildDlg& page) {
        script(page).setText(u"print('hello')\nerror('no')"_s);
        QTest::keyClick(&script(page), Qt::Key_F5);
        ASSERT_EQ(log(page).rowCount(), 2);
        EXPECT_EQ(logged(page).front(), u"hello"_s);
        EXPECT_TRUE(logged(page).back().contains(u"2"_s));
        auto& list = *qobject_cast<QListView*>(page.control(6613));
        Q_EMIT list.doubleClicked(log(page).index(1, 0));
        EXPECT_EQ(script(page).SendScintilla(QsciScintilla::SCI_GETCURRENTPOS), 15);
        script(page).setText(u"return {'a', 1.5}"_s);
        click(page, run);
        EXPECT_EQ(logged(page).size(), 1);
        script(page).setText(u"return 'a'"_s);
        click(page, run);
        EXPECT_TRUE(logged(page).front().endsWith(u"\"a\""_s));
        click(page, 2);
    });
    EXPECT_EQ(text(), u"x = 1"_s);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(m_begun, 3);
    EXPECT_EQ(m_ended, 3);
}

TEST_F(ScriptRunTest, GoesOnWithARunThatWaitsAsOneStepOfUndo)
{
    edit([this](CChildDlg& page) {
        // It calls itself by the text that is tried.
        script(page).setText(u"if ... then print('inner') else wait(0.05) call('f', true) error('late') end"_s);
        click(page, run);
        EXPECT_TRUE(can_stop(page));
        EXPECT_EQ(m_ended, 0);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !can_stop(page); }));
        EXPECT_EQ(m_ended, 1);
        EXPECT_TRUE(logged(page).contains(u"inner"_s));
        EXPECT_TRUE(logged(page).join(u' ').contains(u"late"_s));
    });
    EXPECT_EQ(m_begun, 1);
}

TEST_F(ScriptRunTest, DropsWhatWaitsWhenItIsStoppedRunAgainOrClosed)
{
    edit([this](CChildDlg& page) {
        script(page).setText(u"n = (n or 0) + 1 print(n) wait(0.05) print('late')"_s);
        click(page, run);
        click(page, stop);
        EXPECT_EQ(m_world.scripts().suspended(), 0u);
        EXPECT_EQ(m_ended, 1);
        click(page, run);
        click(page, run);
        EXPECT_EQ(m_world.scripts().suspended(), 1u);
        EXPECT_EQ(logged(page).front(), u"1"_s); // nothing is left of the runs before
        click(page, 2);
    });
    EXPECT_EQ(m_world.scripts().suspended(), 0u);
    EXPECT_EQ(m_begun, 3);
    EXPECT_EQ(m_ended, 3);
}

TEST_F(ScriptRunTest, LeavesTheScenesOwnScriptsAloneUnlessSomethingRuns)
{
    QStringList printed;
    m_world.scripts().on_print = [&](const QString& text) { printed << text; };
    ASSERT_TRUE(m_world.config_scene().add_function(IFunc::create_func(u"g"_s), true, u"wait(1) print('g')"_s));
    m_world.scripts().call(u"g"_s);
    edit([](CChildDlg& page) { click(page, 2); });
    m_world.scripts().tick(m_world.scripts().now() + 2);
    EXPECT_EQ(printed, QStringList{u"g"_s});
}

TEST_F(ScriptRunTest, KeepsTheLastOfManyLinesWithoutCostingTheScriptItsTime)
{
    edit([](CChildDlg& page) {
        script(page).setText(u"for i = 1, 3000 do print(i) end"_s);
        click(page, run);
        ASSERT_EQ(log(page).rowCount(), 1000);
        EXPECT_EQ(logged(page).at(998), u"3000"_s);
    });
}
