#include "engine/base_world.h"
#include "engine/script/config_scene.h"
#include "frame/boxes.h"
#include "frame/child_dlg.h"
#include "frame/cmd_test.h"
#include "frame/script_edit.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace Qt::StringLiterals;

/// Lets the test use the open dialog, and answers the question whether to discard.
class Author : public tarn::boxes::Responder {
public:
    Author() { tarn::boxes::set_responder(this); }
    ~Author() override { tarn::boxes::set_responder(nullptr); }

    tarn::boxes::Button message(QWidget*, const tarn::boxes::Message&) override
    {
        ++questions;
        return questions > refusals ? tarn::boxes::Button::Ok : tarn::boxes::Button::Cancel;
    }
    std::optional<QString> prompt(QWidget*, const tarn::boxes::Prompt&) override { return {}; }
    QString file(QWidget*, const tarn::boxes::File&) override { return {}; }
    int menu(QWidget*, const tarn::boxes::Menu&) override { return 0; }
    std::optional<QColor> color(QWidget*, const QColor&) override { return {}; }
    int dialog(QDialog& dialog) override
    {
        QTimer::singleShot(0, &dialog, [&] { work(*dialog.findChild<CChildDlg*>()); });
        return dialog.exec();
    }

    std::function<void(CChildDlg&)> work;
    int questions = 0;
    int refusals = 0; ///< how many of the first questions are answered with Cancel
};

class ScriptEditor : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_world.config_scene().add_function(IFunc::create_func(u"f"_s), true, u"x = 1"_s));
    }

    int edit(std::function<void(CChildDlg&)> work, int line = -1)
    {
        m_author.work = std::move(work);
        return CDlgCmdTest::do_modal(u"f"_s, &m_world, nullptr, line);
    }
    QString text() { return m_world.config_scene().find_function(u"f"_s)->text(); }
    static CScriptEdit& script(CChildDlg& page) { return *qobject_cast<CScriptEdit*>(page.control(6601)); }
    static void click(CChildDlg& page, int id) { qobject_cast<QAbstractButton*>(page.control(id))->click(); }

    CBaseWorld m_world;
    Author m_author;
};

} // namespace

TEST_F(ScriptEditor, KeepsTextOfAnyScriptAndEndsLinesAlike)
{
    EXPECT_EQ(edit([](CChildDlg& page) {
                  script(page).setText(u"-- 中文 שלום 😀\r\nprint('é')\n"_s);
                  click(page, 1);
              }),
              1);
    EXPECT_EQ(text(), u"-- 中文 שלום 😀\nprint('é')\n"_s);
}

TEST_F(ScriptEditor, AsksBeforeChangesAreLostAndStaysOpenWhenTheyShouldNotBe)
{
    EXPECT_EQ(edit([](CChildDlg& page) { click(page, 2); }), 2);
    EXPECT_EQ(m_author.questions, 0);
    m_author.refusals = 1;
    EXPECT_EQ(edit([this](CChildDlg& page) {
                  script(page).insert(u"y"_s);
                  click(page, 2);
                  EXPECT_EQ(m_author.questions, 1);
                  EXPECT_TRUE(page.isVisible());
                  QTest::keyClick(page.window(), Qt::Key_Escape);
              }),
              2);
    EXPECT_EQ(m_author.questions, 2);
    EXPECT_EQ(text(), u"x = 1"_s);
}

TEST_F(ScriptEditor, MarksAFaultyLineUntilItIsMended)
{
    edit([](CChildDlg& page) {
        const auto* fault = qobject_cast<QLabel*>(page.control(6612));
        script(page).setText(u"x = 1\ny = = 2\n"_s);
        EXPECT_TRUE(QTest::qWaitFor([&] { return script(page).faulty_lines() == std::vector{1}; }));
        EXPECT_TRUE(fault->text().contains(u"2"_s));
        script(page).setText(u"x = 1\ny = 2\n"_s);
        EXPECT_TRUE(QTest::qWaitFor([&] { return script(page).faulty_lines().empty() && fault->text().isEmpty(); }));
        click(page, 1);
    });
}

TEST_F(ScriptEditor, ReplacesEverywhereInOneStepOfItsUndo)
{
    edit([](CChildDlg& page) {
        script(page).setText(u"ab = ab + Ab"_s);
        qobject_cast<QLineEdit*>(page.control(6602))->setText(u"ab"_s);
        qobject_cast<QLineEdit*>(page.control(6603))->setText(u"abab"_s);
        click(page, 6607);
        EXPECT_EQ(script(page).script(), u"abab = abab + abab"_s);
        script(page).undo();
        EXPECT_EQ(script(page).script(), u"ab = ab + Ab"_s);
        click(page, 1);
    });
}

TEST_F(ScriptEditor, RunsTheTextAsItStandsAndStoresNothingByIt)
{
    int changes = 0;
    m_world.config_scene().on_changed = [&] { ++changes; };
    edit([](CChildDlg& page) {
        script(page).setText(u"print('hello')\nerror('no')"_s);
        click(page, 6614);
        const auto* log = qobject_cast<QListView*>(page.control(6613))->model();
        ASSERT_EQ(log->rowCount(), 2);
        EXPECT_EQ(log->index(0, 0).data().toString(), u"hello"_s);
        EXPECT_TRUE(log->index(1, 0).data().toString().contains(u"2"_s));
        click(page, 2);
    });
    EXPECT_EQ(text(), u"x = 1"_s);
    EXPECT_EQ(changes, 0);
}
