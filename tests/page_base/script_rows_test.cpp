#include "core/field.h"
#include "frame/script_edit.h"
#include "support/editor_fixture.h"
#include "widgets/button_st.h"

#include <QLineEdit>
#include <QListView>

namespace tarn::test {

namespace {

constexpr quint32 blue = 0x0000ff;
constexpr int script_buttons[] = {6520, 6418, 6426, 6432, 6433};
constexpr int remove_buttons[] = {6096, 6095, 6524, 6435, 6436};

struct PageEvents {
    const char* page;
    int control_type; ///< -1 for dialogs
    std::vector<quint32> events;
};

const PageEvents pages[] = {
    {"CDlgPropButton", DXUT_CONTROL_BUTTON, {0x101, 0x102, 0x103, 0x104, 0x105}},
    {"CDlgPropButtonST", DXUT_CONTROL_BUTTONST, {0x101, 0x102, 0x103, 0x104, 0x105}},
    {"CDlgPropCheck", DXUT_CONTROL_CHECKBOX, {0x401, 0x102, 0x103, 0x704, 0x705}},
    {"CDlgPropRadio", DXUT_CONTROL_RADIOBUTTON, {0x301, 0x102, 0x103, 0x706, 0x707}},
    {"CDlgPropDialogScript", -1, {0x1101, 0x1102, 0x1103, 0x1105}},
};

class ScriptRowsTest : public Editor {
protected:
    void SetUp() override
    {
        start();
        m_home = core().create_dialog({0, 0, 400, 300});
    }
    CDXUTControl* select_new(int type)
    {
        CDXUTControl* made = core().create_control(type, m_home, {0, 0, 80, 24});
        select(made);
        return made;
    }
    void select(CDXUTControl* control)
    {
        core().SelectControl(control, false);
        m_world.broadcast(ui_selection_changed);
    }
    void select_dialog(CDXUTDialog* dialog)
    {
        core().SelectDialog(dialog, false);
        m_world.broadcast(ui_selection_changed);
    }
    CButtonST& at(const char* name, int id)
    {
        return *qobject_cast<CButtonST*>(page(QLatin1String(name))->control(id));
    }
    /// Opens the script of row `row` and leaves the script editor as it is.
    void open(const char* name, int row)
    {
        m_answers.dialogs.push_back([](QDialog& dialog) { dialog.reject(); });
        at(name, script_buttons[row]).click();
    }
    void remove(const char* name, int row, boxes::Button answer = boxes::Button::Ok)
    {
        m_answers.buttons.push_back(answer);
        at(name, remove_buttons[row]).click();
    }
    bool has_function(const QString& name) { return m_scene->functions().find_function(name) != nullptr; }

    CDXUTDialog* m_home = nullptr;
};

} // namespace

TEST_F(ScriptRowsTest, each_page_binds_the_events_of_its_type)
{
    for (const PageEvents& type : pages) {
        SCOPED_TRACE(type.page);
        CDXUTControl* control = type.control_type < 0 ? nullptr : select_new(type.control_type);
        if (!control)
            select_dialog(m_home);
        for (int row = 0; row < int(type.events.size()); ++row) {
            const quint32 event = type.events[std::size_t(row)];
            const QString name = control ? u"GUI_FUNC_%1_%2"_s.arg(control->id()).arg(GetEventStrName(event))
                                         : m_home->get_func_str(event);
            EXPECT_EQ(at(type.page, script_buttons[row]).text(), event_caption(event));
            EXPECT_EQ(at(type.page, script_buttons[row]).text_color(), 0u);
            EXPECT_FALSE(at(type.page, remove_buttons[row]).isEnabled());
            open(type.page, row);
            EXPECT_TRUE(has_function(name)) << name.toStdString();
            EXPECT_EQ(m_scene->events().IsFuncExist(control ? control->id() : m_home->id(), event), control != nullptr);
            EXPECT_EQ(at(type.page, script_buttons[row]).text_color(), blue);
            remove(type.page, row);
            EXPECT_FALSE(has_function(name));
            EXPECT_EQ(at(type.page, script_buttons[row]).text_color(), 0u);
            EXPECT_FALSE(at(type.page, remove_buttons[row]).isEnabled());
        }
    }
    EXPECT_TRUE(m_scene->events().events().empty());
}

TEST_F(ScriptRowsTest, the_rows_follow_the_current_object_and_spare_other_types)
{
    const char* page_name = "CDlgPropButton";
    CDXUTControl* button = select_new(DXUT_CONTROL_BUTTON);
    open(page_name, 0);
    CDXUTControl* other = select_new(DXUT_CONTROL_BUTTON);
    EXPECT_EQ(at(page_name, 6520).text_color(), 0u);
    select(button);
    EXPECT_EQ(at(page_name, 6520).text_color(), blue);
    select_new(DXUT_CONTROL_CHECKBOX);
    EXPECT_FALSE(at(page_name, 6520).isEnabled() || at(page_name, 6096).isEnabled());
    EXPECT_EQ(m_scene->events().GetFunc(other->id(), EVENT_BUTTON_CLICKED), nullptr);

    const char* dialog_page = "CDlgPropDialogScript";
    select_dialog(m_home);
    open(dialog_page, 2);
    select_dialog(core().create_dialog({0, 0, 50, 50}));
    EXPECT_EQ(at(dialog_page, 6426).text_color(), 0u);
}

TEST_F(ScriptRowsTest, an_event_keeps_its_function_and_a_function_without_event_is_reused)
{
    const CDXUTControl* button = select_new(DXUT_CONTROL_BUTTON);
    const QString own = CEventManager::new_function_name(button->id(), EVENT_BUTTON_CLICKED);
    ASSERT_TRUE(m_scene->functions().set_function(own, u"local kept = 1"_s));
    open("CDlgPropButton", 0);
    EXPECT_EQ(m_scene->functions().find_function(own)->text(), u"local kept = 1"_s);

    m_scene->events().CreateEventW(button->id(), EVENT_BUTTON_MOUSE_LEFT, u"made elsewhere"_s);
    open("CDlgPropButton", 2);
    EXPECT_TRUE(has_function(u"made elsewhere"_s));
    EXPECT_EQ(m_scene->functions().functions().size(), 2u);
}

TEST_F(ScriptRowsTest, removing_asks_first_and_needs_no_function)
{
    const CDXUTControl* button = select_new(DXUT_CONTROL_BUTTON);
    open("CDlgPropButton", 1);
    const QString name = CEventManager::new_function_name(button->id(), EVENT_BUTTON_MOUSE_ENTERED);
    remove("CDlgPropButton", 1, boxes::Button::Cancel);
    EXPECT_EQ(m_answers.texts.last(), u"是否删除当前脚本？"_s);
    EXPECT_TRUE(has_function(name));
    EXPECT_EQ(m_scene->events().events().size(), 1u);
    m_scene->functions().del_function(name);
    remove("CDlgPropButton", 1);
    EXPECT_TRUE(m_scene->events().events().empty());
}

TEST_F(ScriptRowsTest, scripts_are_outside_of_undo_but_count_as_a_change)
{
    const CDXUTControl* button = select_new(DXUT_CONTROL_BUTTON);
    m_scene->journal().mark_saved();
    const std::size_t steps = m_scene->journal().step_count();
    open("CDlgPropButton", 0);
    EXPECT_FALSE(m_scene->journal().is_saved());
    EXPECT_EQ(m_scene->journal().step_count(), steps);
    ASSERT_TRUE(m_scene->journal().undo());
    EXPECT_TRUE(m_scene->events().IsFuncExist(button->id(), EVENT_BUTTON_CLICKED));
}

TEST_F(ScriptRowsTest, scripts_of_controls_that_are_gone_are_cleaned_up)
{
    CDXUTControl* kept = select_new(DXUT_CONTROL_BUTTON);
    open("CDlgPropButton", 0);
    CDXUTControl* gone = select_new(DXUT_CONTROL_BUTTON);
    open("CDlgPropButton", 0);
    m_scene->RemoveCtrl(gone);
    m_codes.clear();
    qobject_cast<CButtonST*>(page(u"CDlgGuiManagerCtrl"_s)->control(6592))->click();
    ASSERT_EQ(m_scene->events().events().size(), 1u);
    EXPECT_EQ(m_scene->events().events().front()->control(), kept->id());
    EXPECT_EQ(m_scene->functions().functions().size(), 1u);
    EXPECT_FALSE(m_codes.empty());
}

TEST_F(ScriptRowsTest, the_editor_begins_with_a_line_that_names_the_arguments_and_runs_with_the_object)
{
    CDXUTControl* box = select_new(DXUT_CONTROL_CHECKBOX);
    ASSERT_TRUE(box->set_property(*box->fields().find("checked"), true));
    const QString name = CEventManager::new_function_name(box->id(), EVENT_CHECKBOX_CLICKED);
    QStringList logged;
    m_answers.dialogs.push_back([&](QDialog& dialog) {
        auto& edit = *dialog.findChild<CScriptEdit*>();
        EXPECT_EQ(edit.script(), u"local self, event, value = ...\n"_s);
        edit.append(u"print(self.id, event, value)"_s);
        auto* page = dialog.findChild<CChildDlg*>();
        qobject_cast<QAbstractButton*>(page->control(6614))->click();
        const auto* log = qobject_cast<QListView*>(page->control(6613))->model();
        for (int row = 0; row < log->rowCount(); ++row)
            logged.append(log->index(row, 0).data().toString());
        dialog.accept();
    });
    at("CDlgPropCheck", script_buttons[0]).click();
    ASSERT_EQ(logged.size(), 3);
    EXPECT_TRUE(logged[0].contains(u"\"%1\", \"CheckClick\", true"_s.arg(box->name()))) << logged[0].toStdString();
    EXPECT_EQ(logged[1], u"%1\tCheckClick\ttrue"_s.arg(box->id()));
    EXPECT_TRUE(m_scene->functions().find_function(name)->text().startsWith(u"local self"_s));
}

TEST_F(ScriptRowsTest, a_function_that_is_there_can_be_chosen_and_goes_with_the_last_that_names_it)
{
    const char* name = "CDlgPropButton";
    ASSERT_TRUE(m_scene->functions().set_function(u"greet"_s, u"print('hi')"_s));
    const auto choose = [&](int row) {
        m_answers.commands.push_back(2);
        m_answers.dialogs.push_back([](QDialog& dialog) {
            auto* page = dialog.findChild<CChildDlg*>();
            qobject_cast<QLineEdit*>(page->control(6881))->setText(u"gre"_s);
            qobject_cast<QAbstractButton*>(page->control(1))->click();
        });
        Q_EMIT at(name, script_buttons[row]).customContextMenuRequested({});
    };
    const CDXUTControl* button = select_new(DXUT_CONTROL_BUTTON);
    open(name, 0);
    choose(0);
    EXPECT_EQ(m_scene->events().GetFunc(button->id(), EVENT_BUTTON_CLICKED)->function(), u"greet"_s);
    EXPECT_EQ(m_scene->functions().functions().size(), 1U) << "the event's own function was empty";
    choose(1);
    at(name, remove_buttons[0]).click(); // Nothing is lost, so nothing is asked.
    EXPECT_TRUE(has_function(u"greet"_s));
    remove(name, 1);
    EXPECT_FALSE(has_function(u"greet"_s));

    ASSERT_TRUE(m_scene->functions().set_function(u"greet"_s, u"print('hi')"_s));
    ASSERT_TRUE(m_scene->functions().set_function(u"other"_s, u"call(\"greet\")"_s));
    choose(0);
    remove(name, 0);
    EXPECT_TRUE(has_function(u"greet"_s)) << "the text of another function names it";

    select_dialog(m_home);
    name = "CDlgPropDialogScript";
    choose(2);
    EXPECT_EQ(m_scene->functions().find_function(m_home->get_func_str(EVENT_DIALOG_CLOSED))->text(),
              u"return call(\"greet\", ...)\n"_s);
}

TEST_F(ScriptRowsTest, a_button_whose_function_is_missing_or_faulty_is_marked)
{
    const CDXUTControl* button = select_new(DXUT_CONTROL_BUTTON);
    m_scene->events().CreateEventW(button->id(), EVENT_BUTTON_CLICKED, u"f"_s);
    const auto marked = [&] {
        m_world.broadcast(ui_selection_changed);
        return !at("CDlgPropButton", script_buttons[0]).icon().isNull();
    };
    EXPECT_TRUE(marked());
    ASSERT_TRUE(m_scene->functions().set_function(u"f"_s, u"print('hi'"_s));
    EXPECT_TRUE(marked());
    ASSERT_TRUE(m_scene->functions().set_function(u"f"_s, u"print('hi')"_s));
    EXPECT_FALSE(marked());
}

} // namespace tarn::test
