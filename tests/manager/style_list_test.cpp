#include "frame/dlg_group.h"
#include "gui_core/gui_style.h"
#include "gui_core/style_look.h"
#include "manager/dlg_style_manager.h"
#include "manager/report_list_style.h"
#include "shell/prop_bar.h"
#include "support/editor_fixture.h"
#include "widgets/button_st.h"
#include "widgets/super_edit.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace tarn::test {

namespace {

class StyleList : public Editor {
protected:
    void SetUp() override
    {
        qputenv("XDG_DATA_HOME", m_data.path().toUtf8());
        VLCMsgIniW::set_language(Language::English);
        start();
        m_page = page(u"CDlgStyleManager"_s);
        m_list = static_cast<CReportListStyle*>(m_page->control(6340));
        m_world.broadcast(ui_full_refresh);
        m_codes.clear();
    }
    void TearDown() override
    {
        Editor::TearDown();
        qputenv("XDG_DATA_HOME", m_data_home);
    }
    void click(int id) { static_cast<QAbstractButton*>(m_page->control(id))->click(); }
    QStringList names() const
    {
        QStringList list;
        for (int row = 0; row < m_list->row_count(); ++row)
            list.append(m_list->item_caption(row, 0) + QString::number(m_list->icon_index(row)));
        return list;
    }
    void select(const QString& name)
    {
        for (int row = 0; row < m_list->row_count(); ++row)
            if (m_list->item_caption(row, 0) == name)
                m_list->selecte_item_by_ptr_binded(m_list->get_binded_ptr(row));
    }
    void save(const QString& name)
    {
        m_answers.prompts.push_back(name);
        click(6066);
    }
    quint32 text_color() { return core().look().token(u"text"_s); }
    void change(quint32 color)
    {
        const UserAction action(m_scene->journal());
        core().set_token(u"text"_s, color);
    }

    QTemporaryDir m_data;
    QByteArray m_data_home = qgetenv("XDG_DATA_HOME");
    CChildDlg* m_page = nullptr;
    CReportListStyle* m_list = nullptr;
};

} // namespace

TEST_F(StyleList, tells_own_users_and_programs_styles_apart_by_icons)
{
    EXPECT_EQ(m_list->column_captions(), QStringList(u"Name"_s));
    const QStringList program{u"Light2"_s, u"Tavern2"_s};
    EXPECT_EQ(names(), program);
    save(u"Mine"_s);
    EXPECT_EQ(names(), QStringList(u"Mine0"_s) + program);
    m_scene->new_scene();
    EXPECT_EQ(names(), QStringList(u"Mine1"_s) + program);
    EXPECT_EQ(m_answers.texts, QStringList(u"Style Name"_s));
}

TEST_F(StyleList, nothing_is_asked_without_a_row_and_applying_asks_and_redraws)
{
    EXPECT_FALSE(m_page->control(6443)->isEnabled() || m_page->control(6448)->isEnabled());
    select(u"Light"_s);
    const quint32 before = text_color();
    m_answers.buttons = {boxes::Button::Cancel, boxes::Button::Ok};
    click(6443);
    EXPECT_EQ(text_color(), before);
    click(6443);
    EXPECT_NE(text_color(), before);
    EXPECT_EQ(m_answers.texts, QStringList(2, u"Current style will be lost!"_s));
    EXPECT_EQ(m_list->style_at(m_list->get_last_sel_index()), core().worn_style());
    EXPECT_EQ(m_scene->journal().step_count(), 1u);
    EXPECT_FALSE(m_page->control(6448)->isEnabled()) << "the program's own stay";
    ASSERT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(text_color(), before);
}

TEST_F(StyleList, a_double_click_informs_and_applies_and_beside_the_rows_only_informs)
{
    m_answers.buttons = {boxes::Button::Ok, boxes::Button::Ok};
    const quint32 before = text_color();
    m_list->resize(200, 300);
    QTest::mouseDClick(m_list->viewport(), Qt::LeftButton, {}, {60, 250});
    EXPECT_EQ(text_color(), before);
    QTest::mouseDClick(m_list->viewport(), Qt::LeftButton, {},
                       m_list->visualRect(m_list->model()->index(1, 0)).center());
    EXPECT_EQ(core().worn_style()->name(), u"Tavern"_s);
    EXPECT_EQ(m_answers.texts, QStringList(2, u"Current style will be lost! continue?"_s));
}

TEST_F(StyleList, saving_a_taken_name_asks_and_deleting_takes_style_and_file)
{
    change(0xff112233);
    save(u"Mine"_s);
    const QString file = m_scene->style_file(u"Mine"_s);
    EXPECT_TRUE(QFile::exists(file));
    change(0xff445566);
    m_answers.buttons = {boxes::Button::No, boxes::Button::Yes};
    save(u"Mine"_s);
    EXPECT_EQ(core().find_style(u"Mine"_s)->style_state().tokens.value(u"text"_s), 0xff112233u);
    save(u"Mine"_s);
    EXPECT_EQ(core().find_style(u"Mine"_s)->style_state().tokens.value(u"text"_s), 0xff445566u);
    m_answers.buttons = {boxes::Button::Ok};
    save(u"a/b"_s); // No file can be called so: a message.
    EXPECT_EQ(core().find_style(u"a/b"_s), nullptr);

    select(u"Mine"_s);
    m_answers.buttons = {boxes::Button::Cancel, boxes::Button::Ok};
    click(6448);
    EXPECT_TRUE(core().find_style(u"Mine"_s) && QFile::exists(file));
    click(6448);
    EXPECT_FALSE(core().find_style(u"Mine"_s) || QFile::exists(file));
    EXPECT_EQ(text_color(), 0xff445566u) << "the interface keeps its look";
    EXPECT_EQ(m_answers.texts.last(), u"Remove the style?"_s);
    ASSERT_TRUE(m_scene->journal().undo());
    EXPECT_TRUE(core().find_style(u"Mine"_s)) << "the scene's";
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(StyleList, deleting_a_style_whose_name_leads_elsewhere_leaves_files_alone)
{
    const QString victim = m_data.filePath(u"x.style"_s);
    QFile(victim).open(QIODevice::WriteOnly);
    auto* state = new StyleState;
    state->name = u"../../x"_s;
    {
        const UserAction action(m_scene->journal());
        core().add_style(StatePtr(state));
    }
    m_world.broadcast(ui_scene_changed);
    select(u"../../x"_s);
    m_answers.buttons = {boxes::Button::Ok};
    click(6448);
    EXPECT_TRUE(core().GetStyles().isEmpty());
    EXPECT_TRUE(QFile::exists(victim));
}

TEST_F(StyleList, resetting_asks_with_the_shared_text_and_the_buttons_open_the_design_pages)
{
    change(0xff112233);
    m_answers.buttons = {boxes::Button::Cancel, boxes::Button::Ok};
    click(6436);
    EXPECT_EQ(text_color(), 0xff112233u);
    click(6436);
    EXPECT_EQ(text_color(), 0xffe8eef0u);
    EXPECT_EQ(m_answers.texts, QStringList(2, VLCMsgIniW::VLoadString(3918)));
    auto& bar = *dynamic_cast<CPropBar*>(m_ui.control_bars().front());
    click(6431);
    EXPECT_EQ(bar.group().shown_id(), CPropBar::page_font_design);
    click(6437);
    EXPECT_EQ(bar.group().shown_id(), CPropBar::page_element_editor);
    m_world.broadcast(ui_selection_changed);
    EXPECT_EQ(bar.group().shown_id(), CPropBar::page_element_editor);
}

TEST_F(StyleList, the_animation_speed_is_the_interfaces_and_one_step_for_one_typing)
{
    auto* speed = qobject_cast<CSuperEdit*>(m_page->control(6394));
    EXPECT_EQ(speed->get_pos(), 1);
    speed->selectAll();
    QTest::keyClicks(speed, u"2.5"_s);
    EXPECT_EQ(core().core_state().animation_speed, 2.5f);
    EXPECT_EQ(m_scene->journal().step_count(), 1u);
    ASSERT_TRUE(m_scene->journal().undo());
    m_world.broadcast(ui_scene_changed);
    EXPECT_EQ(speed->get_pos(), 1);
    EXPECT_TRUE(m_page->control(6446)->isHidden());
}

} // namespace tarn::test
