#include "support/editor_fixture.h"
#include "support/package_texts.h"

#include "engine/scene_editor.h"
#include "manager/report_list_dialog.h"
#include "store/pak_file.h"
#include "widgets/button_st.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

namespace tarn::test {

namespace {

enum Id : int {
    id_import = 6016,
    id_merge = 6017,
    id_create = 6315,
    id_remove = 6317,
    id_down = 6318,
    id_up = 6320,
    id_export = 6321,
    id_list = 6340,
};

class DialogManager : public Editor {
protected:
    void SetUp() override
    {
        start();
        for (int i = 0; i < 3; ++i)
            core().create_dialog(QRect(10 * i, 10, 100, 80));
        m_world.broadcast(ui_scene_changed);
        m_codes.clear();
    }
    CChildDlg& manager() { return *page(u"CDlgGuiManager"_s); }
    CReportListDialog& list() { return *dynamic_cast<CReportListDialog*>(manager().control(id_list)); }
    CButtonST& button(int id) { return *dynamic_cast<CButtonST*>(manager().control(id)); }
    void click(int id) { button(id).click(); }
    void click_row(int row, int column) { Q_EMIT list().item_clicked(row, column); }
    void select_row(int row)
    {
        core().SelectDialog(list().dialog(row), false);
        m_world.broadcast(ui_selection_changed);
        m_codes.clear();
    }
    QStringList names()
    {
        QStringList all;
        for (int i = 0; i < list().row_count(); ++i)
            all.append(list().item_caption(i, 0));
        return all;
    }
};

TEST_F(DialogManager, lists_the_top_layer_first_and_follows_the_current_dialog)
{
    EXPECT_EQ(list().get_binded_ptr(0), core().GetDialogs().last());
    select_row(2);
    EXPECT_EQ(list().get_last_sel_index(), 2);
    core().SelectDialog(core().GetRootDialog(), false); // Not in the list.
    m_world.broadcast(ui_selection_changed);
    EXPECT_EQ(list().get_last_sel_index(), -1);
}

TEST_F(DialogManager, row_buttons_are_enabled_by_the_row)
{
    struct Case {
        int row;
        bool remove, up, down;
    };
    for (const Case& c : {Case{0, true, false, true}, Case{1, true, true, true}, Case{2, true, true, false}}) {
        select_row(c.row);
        EXPECT_EQ(button(id_remove).isEnabled(), c.remove) << c.row;
        EXPECT_EQ(button(id_up).isEnabled(), c.up) << c.row;
        EXPECT_EQ(button(id_down).isEnabled(), c.down) << c.row;
    }
    click_row(-1, -1);
    EXPECT_EQ(core().selection().current_dialog, nullptr);
    EXPECT_EQ(m_codes, std::vector<int>{ui_selection_changed});
    core().ClearDialogSelection();
    m_world.broadcast(ui_scene_changed);
    for (const int id : {id_remove, id_up, id_down})
        EXPECT_FALSE(button(id).isEnabled()) << id;
}

TEST_F(DialogManager, a_click_beside_the_name_toggles_visibility_without_selecting)
{
    select_row(0);
    CDXUTDialog* hidden = list().dialog(1);
    click_row(1, 1);
    EXPECT_FALSE(hidden->GetVisible());
    EXPECT_EQ(core().selection().current_dialog, list().dialog(0));
    EXPECT_TRUE(m_codes.empty());
    EXPECT_TRUE(m_scene->journal().undo());
    EXPECT_TRUE(hidden->GetVisible());
}

TEST_F(DialogManager, moves_layers_and_keeps_the_row_selected)
{
    const QStringList before = names();
    select_row(1);
    CDXUTDialog* moved = list().dialog(1);
    click(id_up);
    EXPECT_EQ(list().get_last_sel_index(), 0);
    EXPECT_EQ(core().GetDialogs().last(), moved);
    click(id_down);
    EXPECT_EQ(names(), before);
    EXPECT_TRUE(m_codes.empty());
}

TEST_F(DialogManager, remove_asks_and_is_undone)
{
    select_row(0);
    CDXUTDialog* dialog = list().dialog(0);
    m_answers.buttons = {boxes::Button::Cancel, boxes::Button::Ok};
    click(id_remove);
    EXPECT_TRUE(dialog->is_attached());
    click(id_remove);
    EXPECT_FALSE(dialog->is_attached());
    EXPECT_EQ(m_answers.texts, QStringList({u"你正在删除你的对话框!"_s, u"你正在删除你的对话框!"_s}));
    EXPECT_EQ(m_answers.titles.last(), u"删除 “Dialog3”"_s);
    EXPECT_EQ(list().row_count(), 2);
    EXPECT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(core().GetDialogs().last(), dialog);
}

TEST_F(DialogManager, create_window_arms_the_view_until_the_dialog_is_made)
{
    click(id_create);
    EXPECT_EQ(m_scene->mouse_function(), 1);
    click(id_create);
    EXPECT_EQ(m_scene->mouse_function(), 0);
    click(id_create);
    for (const auto kind : {MouseEvent::Kind::Press, MouseEvent::Kind::Release})
        m_world.mouse_tool()->mouse({.kind = kind, .place = {20, 30}, .button = Qt::LeftButton, .modifiers = {}});
    EXPECT_EQ(list().row_count(), 4);
    EXPECT_FALSE(button(id_create).GetCheck());
    EXPECT_EQ(m_scene->mouse_function(), 0);
}

TEST_F(DialogManager, export_import_and_merge_go_through_the_file)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"out.tarn"_s);
    const QByteArray before = all_texts(m_scene->gui_core());
    m_answers.files = {path, path, path};
    click(id_export);
    EXPECT_FALSE(button(id_export).GetCheck());

    core().create_dialog(QRect(0, 0, 50, 50));
    m_answers.buttons = {boxes::Button::Cancel, boxes::Button::Ok};
    click(id_import); // Cancelled at the warning.
    click(id_import);
    EXPECT_EQ(all_texts(m_scene->gui_core()), before);
    EXPECT_EQ(m_codes, std::vector<int>{ui_full_refresh});

    m_answers.prompts = {u""_s, u"  "_s, u"Part"_s};
    m_answers.buttons = {boxes::Button::No};
    click(id_merge);
    EXPECT_TRUE(m_answers.prompts.empty()) << "an empty name is asked for again";
    EXPECT_EQ(list().row_count(), 6);
    EXPECT_EQ(m_answers.filters,
              QStringList({u"TARN文件(*.tarn)|*.tarn|all files(*.*)|*.*||"_s,
                           u"TARN File(*.tarn)|*.tarn|All Files(*.*)|*.*||"_s,
                           u"TARN File(*.tarn)|*.tarn|All Files(*.*)|*.*||"_s}));
    EXPECT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(all_texts(m_scene->gui_core()), before);
}

TEST_F(DialogManager, a_faulty_package_gives_one_message_and_leaves_the_scene)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"bad.tarn"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no package");
    file.close();
    const QByteArray before = all_texts(m_scene->gui_core());
    m_answers.files = {file.fileName(), file.fileName()};
    m_answers.buttons = {boxes::Button::Ok, boxes::Button::Ok, boxes::Button::Ok};
    click(id_create);
    click(id_import);
    EXPECT_EQ(m_answers.texts.size(), 2); // The warning, then the message.
    EXPECT_FALSE(button(id_create).GetCheck() || m_scene->mouse_function());
    click(id_merge);
    EXPECT_EQ(m_answers.texts.size(), 3) << "nothing is asked about a package that cannot be merged";
    EXPECT_TRUE(m_answers.texts.last().contains(file.fileName()));
    EXPECT_EQ(all_texts(m_scene->gui_core()), before);
    EXPECT_TRUE(m_codes.empty());
}

TEST_F(DialogManager, create_window_shows_what_is_armed_whatever_happens)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.tarn"_s);
    ASSERT_TRUE(m_scene->save_scene(path).ok());
    const std::function<void()> happenings[] = {
        [&] { m_scene->new_scene(); },
        [&] { EXPECT_TRUE(m_scene->open_scene(path).ok()); },
        [&] {
            m_answers.files = {path};
            m_answers.buttons = {boxes::Button::Ok};
            click(id_import);
        },
        [&] { EXPECT_TRUE(m_scene->editor().cancel_creation()); },
        [&] {
            EXPECT_TRUE(m_scene->journal().undo());
            m_world.broadcast(ui_scene_changed);
        },
        [&] { m_world.broadcast(ui_control_selected); },
        [&] { m_scene->play(true), m_scene->play(false), m_world.broadcast(ui_scene_changed); },
    };
    for (const auto& happens : happenings) {
        click(id_create);
        EXPECT_TRUE(button(id_create).GetCheck());
        happens();
        EXPECT_FALSE(button(id_create).GetCheck());
        EXPECT_EQ(m_scene->mouse_function(), 0);
    }
    click(id_create);
    m_scene->SetMTFunction(2, DXUT_CONTROL_BUTTON);
    m_world.broadcast(ui_selection_changed);
    EXPECT_FALSE(button(id_create).GetCheck()) << "a control is drawn now";
}

TEST_F(DialogManager, f2_and_the_menu_rename_a_dialog_as_the_page_would)
{
    select_row(0);
    const auto type = [&](const QString& name) {
        auto* field = list().findChild<QLineEdit*>();
        ASSERT_NE(field, nullptr);
        field->selectAll();
        QTest::keyClicks(field, name);
        QTest::keyClick(field, Qt::Key_Tab);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    QTest::keyClick(&list(), Qt::Key_F2);
    type(QString(40, u'x'));
    EXPECT_EQ(list().dialog(0)->name(), QString(31, u'x')) << "no longer than the model has it";
    EXPECT_EQ(m_codes, std::vector{int(ui_dialog_properties)});
    EXPECT_EQ(list().get_last_sel_index(), 0) << "Tab goes to no other row";
    m_answers.commands = {1000};
    Q_EMIT list().menu_requested(0, {});
    EXPECT_TRUE(m_answers.texts.last().startsWith(u"1000 重命名"_s));
    type(u"Main"_s);
    EXPECT_EQ(list().dialog(0)->name(), u"Main"_s);
    EXPECT_TRUE(m_scene->journal().undo());
    EXPECT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(list().dialog(0)->name(), u"Dialog3"_s);
}

TEST_F(DialogManager, a_right_click_selects_the_row_and_offers_the_commands_of_the_edit_menu)
{
    manager().resize(400, 700);
    select_row(0);
    const auto right_click = [&](int row) {
        const QPoint place = row < 0 ? QPoint(5, 300) : list().visualRect(list().model()->index(row, 1)).center();
        QTest::mouseClick(list().viewport(), Qt::RightButton, {}, place);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, list().viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(list().viewport(), &event);
    };
    CDXUTDialog* dialog = list().dialog(2);
    m_answers.commands = {0};
    right_click(2);
    EXPECT_TRUE(dialog->GetVisible());
    EXPECT_EQ(core().selection().dialogs, std::vector{dialog});
    EXPECT_EQ(list().get_last_sel_index(), 2);
    EXPECT_EQ(m_codes, std::vector<int>{ui_selection_changed});
    const auto command = [&](const QString& name) {
        for (const QString& text : m_answers.texts)
            if (text.endsWith(u' ' + name))
                return text.section(u' ', 0, 0).toInt();
        return 0;
    };
    m_answers.commands = {command(u"再制"_s)};
    right_click(2);
    EXPECT_EQ(list().row_count(), 4);
    EXPECT_EQ(list().item_caption(0, 0), u"Dialog4"_s);
    EXPECT_EQ(list().get_last_sel_index(), 0) << "the copy is selected";
    m_answers.commands = {command(u"删除"_s)};
    m_answers.buttons = {boxes::Button::Ok};
    right_click(0);
    EXPECT_EQ(m_answers.texts.last(), u"你正在删除你的对话框!"_s);
    EXPECT_EQ(m_answers.titles.last(), u"删除 “Dialog4”"_s) << "as Remove asks";
    EXPECT_EQ(list().row_count(), 3);
    m_answers.commands = {0};
    right_click(-1);
    EXPECT_TRUE(core().selection().dialogs.empty());
    core().SelectDialog(list().dialog(0), false);
    core().SelectDialog(list().dialog(1), true);
    m_answers.commands = {0};
    right_click(0);
    EXPECT_EQ(core().selection().dialogs.size(), 2u) << "what is selected together stays so";
    EXPECT_EQ(core().selection().current_dialog, list().dialog(0));
}

} // namespace

} // namespace tarn::test
