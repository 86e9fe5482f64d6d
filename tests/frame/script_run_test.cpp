#include "script_fixture.h"

#include "core/model_object.h"

using namespace tarn::test;

namespace {

constexpr int run = 6614;
constexpr int stop = 6617;

struct LampState : tarn::StateOf<LampState> {
    int width = 0;

    static const tarn::FieldTable& field_table()
    {
        static const tarn::FieldTable table(nullptr, tarn::field<LampState, &LampState::width>("width"));
        return table;
    }
};

class Lamp final : public tarn::ModelObject {
public:
    explicit Lamp(tarn::Document& document) : ModelObject(document, new LampState) {}
    const char* class_name() const override { return "Lamp"; }
    bool is_attached() const override { return true; }
    int width() const { return state<LampState>().width; }
    void grow() { change<&LampState::width>(width() + 1); }
};

/// The scene is a lamp that scripts let grow, and a journal.
class ScriptRunTest : public ScriptEditor {
protected:
    ScriptRunTest()
    {
        tarn::ScriptApi api;
        api.verbs.push_back({"grow", {}, {}, [this](tarn::ScriptCall&) {
                                 m_lamp->grow();
                                 return tarn::Result<tarn::ScriptValue>(tarn::Value());
                             }});
        m_world.set_script_api(std::move(api));
        m_world.begin_edit = [this](const QString& name) {
            return std::shared_ptr<tarn::UserAction>(new tarn::UserAction(m_document.journal(), name),
                                                     [this](tarn::UserAction* action) {
                                                         m_document.journal().cancel();
                                                         delete action;
                                                     });
        };
    }
    static bool can_stop(CChildDlg& page) { return page.control(stop)->isEnabled(); }

    tarn::Document m_document;
    std::shared_ptr<Lamp> m_lamp = std::make_shared<Lamp>(m_document);
};

} // namespace

TEST_F(ScriptRunTest, runs_the_text_as_it_stands_and_stores_nothing_by_it)
{
    const quint64 changes = m_world.config_scene().changes();
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
    EXPECT_EQ(m_world.config_scene().changes(), changes);
    EXPECT_EQ(m_document.journal().step_count(), 0u);
}

TEST_F(ScriptRunTest, goes_on_with_a_run_that_waits_and_takes_all_back_at_the_end)
{
    edit([this](CChildDlg& page) {
        // It calls itself by the text that is tried.
        script(page).setText(u"grow() if ... then print('inner') else wait(0.05) call('f', true) error('late') end"_s);
        click(page, run);
        EXPECT_TRUE(can_stop(page));
        EXPECT_TRUE(m_document.journal().in_action());
        EXPECT_TRUE(QTest::qWaitFor([&] { return !can_stop(page); }));
        EXPECT_TRUE(logged(page).contains(u"inner"_s));
        EXPECT_TRUE(logged(page).join(u' ').contains(u"late"_s));
        EXPECT_EQ(m_lamp->width(), 2);
        click(page, run);
        click(page, run); // ends the one before
        EXPECT_EQ(m_lamp->width(), 1) << "each begins with the scene as it was";
    });
    EXPECT_FALSE(m_document.journal().in_action());
    EXPECT_EQ(m_document.journal().step_count(), 0u);
    EXPECT_EQ(m_lamp->width(), 0);
}

TEST_F(ScriptRunTest, drops_what_waits_when_it_is_stopped_run_again_or_closed)
{
    edit([this](CChildDlg& page) {
        script(page).setText(u"n = (n or 0) + 1 print(n) wait(0.05) print('late')"_s);
        click(page, run);
        click(page, stop);
        EXPECT_EQ(m_world.scripts().suspended(), 0u);
        click(page, run);
        click(page, run);
        EXPECT_EQ(m_world.scripts().suspended(), 1u);
        EXPECT_EQ(logged(page).front(), u"1"_s); // nothing is left of the runs before
        click(page, 2);
    });
    EXPECT_EQ(m_world.scripts().suspended(), 0u);
}

TEST_F(ScriptRunTest, leaves_the_scenes_own_scripts_alone_unless_something_runs)
{
    QStringList printed;
    m_world.scripts().on_print = [&](const QString& text) { printed << text; };
    ASSERT_TRUE(m_world.config_scene().set_function(u"g"_s, u"wait(1) print('g')"_s));
    m_world.scripts().call(u"g"_s);
    edit([](CChildDlg& page) { click(page, 2); });
    m_world.scripts().tick(m_world.scripts().now() + 2);
    EXPECT_EQ(printed, QStringList{u"g"_s});
}

TEST_F(ScriptRunTest, keeps_the_last_of_many_lines_without_costing_the_script_its_time)
{
    edit([](CChildDlg& page) {
        script(page).setText(u"for i = 1, 3000 do print(i) end"_s);
        click(page, run);
        ASSERT_EQ(log(page).rowCount(), 1000);
        EXPECT_EQ(logged(page).at(998), u"3000"_s);
    });
}
