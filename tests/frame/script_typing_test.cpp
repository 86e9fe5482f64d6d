#include "script_fixture.h"

using namespace tarn::test;

namespace {

/// The editor of its own, with a few verbs.
class ScriptTyping : public ScriptEditor {
protected:
    void type_into_empty(const QString& keys, const std::function<void(CScriptEdit&)>& look)
    {
        tarn::ScriptApi api;
        api.verbs.push_back({.name = "show", .parameters = {{"name"}, {"modal"}}});
        api.verbs.push_back({.name = "hide", .of = "control"});
        m_world.set_script_api(std::move(api));
        edit([&](CChildDlg& page) {
            script(page).clear();
            type(script(page), keys);
            look(script(page));
        });
    }
    static bool is(CScriptEdit& edit, unsigned int message) { return edit.SendScintilla(message); }
};

} // namespace

TEST_F(ScriptTyping, indents_blocks_and_puts_their_ends_back)
{
    type_into_empty(u"if a then\nfor i = 1, 2 do\nb()\nend\nelse\nc = {\n}\nend\nd()"_s, [](CScriptEdit& edit) {
        EXPECT_EQ(edit.script(),
                  u"if a then\n    for i = 1, 2 do\n        b()\n    end\nelse\n    c = {\n    }\nend\nd()"_s);
    });
}

TEST_F(ScriptTyping, leaves_no_blanks_in_lines_that_stay_empty)
{
    type_into_empty(u"do\n\na()"_s, [](CScriptEdit& edit) {
        EXPECT_EQ(edit.script(), u"do\n\n    a()"_s);
        edit.undo();
        edit.undo();
        EXPECT_FALSE(edit.script().contains(u'a'));
    });
}

TEST_F(ScriptTyping, takes_a_text_that_is_put_in_whole_as_it_is)
{
    const QString whole = u"if a then\n  b:hi\nend\n中文"_s;
    type_into_empty({}, [&](CScriptEdit& edit) {
        QInputMethodEvent commit;
        commit.setCommitString(whole);
        QApplication::sendEvent(&edit, &commit);
        EXPECT_EQ(edit.script(), whole);
        EXPECT_FALSE(is(edit, QsciScintilla::SCI_AUTOCACTIVE));
    });
}

TEST_F(ScriptTyping, completes_with_enter_but_not_a_word_that_is_complete)
{
    type_into_empty(u"sho\n(1)\nx:\n"_s, [](CScriptEdit& edit) { EXPECT_EQ(edit.script(), u"show(1)\nx:get"_s); });
    // An unfinished list must not swallow the end of the line.
    type_into_empty(u"do\nend\nshow\n"_s, [](CScriptEdit& edit) { EXPECT_EQ(edit.script(), u"do\nend\nshow\n"_s); });
    type_into_empty(u"do\nen\n"_s, [](CScriptEdit& edit) { EXPECT_EQ(edit.script(), u"do\nend"_s); });
    // One letter offers nothing by itself.
    type_into_empty(u"s"_s, [](CScriptEdit& edit) {
        EXPECT_FALSE(is(edit, QsciScintilla::SCI_AUTOCACTIVE));
        QTest::keyClick(&edit, Qt::Key_Space, Qt::ControlModifier);
        EXPECT_TRUE(is(edit, QsciScintilla::SCI_AUTOCACTIVE));
        QTest::keyClick(&edit, Qt::Key_Escape);
        EXPECT_FALSE(is(edit, QsciScintilla::SCI_AUTOCACTIVE));
        EXPECT_TRUE(edit.window()->isVisible());
    });
}

TEST_F(ScriptTyping, shows_a_calls_tip_until_it_is_closed_or_left)
{
    type_into_empty(u"show('a'"_s, [](CScriptEdit& edit) {
        EXPECT_TRUE(is(edit, QsciScintilla::SCI_CALLTIPACTIVE));
        QTest::keyClick(&edit, Qt::Key_Escape);
        type(edit, u", 1"_s);
        EXPECT_FALSE(is(edit, QsciScintilla::SCI_CALLTIPACTIVE));
        QTest::keyClick(&edit, Qt::Key_Space, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_TRUE(is(edit, QsciScintilla::SCI_CALLTIPACTIVE));
        type(edit, u")"_s);
        EXPECT_FALSE(is(edit, QsciScintilla::SCI_CALLTIPACTIVE));
    });
}

TEST_F(ScriptTyping, comments_and_indents_the_selected_lines)
{
    type_into_empty({}, [](CScriptEdit& edit) {
        const QString before = u"  a()\n\n    -- b\nc()\n"_s;
        edit.setText(before);
        edit.setSelection(0, 1, 3, 0); // not line 3, where it ends
        QTest::keyClick(&edit, Qt::Key_Slash, Qt::ControlModifier);
        EXPECT_EQ(edit.script(), u"  -- a()\n\n  --   -- b\nc()\n"_s);
        QTest::keyClick(&edit, Qt::Key_Slash, Qt::ControlModifier);
        EXPECT_EQ(edit.script(), before);
        QTest::keyClick(&edit, Qt::Key_Tab);
        EXPECT_EQ(edit.script(), u"      a()\n\n        -- b\nc()\n"_s);
        QTest::keyClick(&edit, Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_EQ(edit.script(), u"    a()\n\n    -- b\nc()\n"_s);
        edit.undo();
        EXPECT_EQ(edit.script(), u"      a()\n\n        -- b\nc()\n"_s);
    });
}
