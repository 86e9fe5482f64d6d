#include "core/appinfo.h"
#include "design/child_element_text.h"
#include "design/dlg_design_button.h"
#include "design/dlg_design_check.h"
#include "design/element_picture.h"
#include "design/state_button.h"
#include "gui_core/gui_style.h"
#include "gui_core/style_look.h"
#include "store/inifile.h"
#include "support/editor_fixture.h"
#include "support/files.h"
#include "widgets/color_swatch.h"

#include <QComboBox>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

#include <array>

namespace tarn::test {

namespace {

class ElementEditor : public Editor {
protected:
    void SetUp() override
    {
        qputenv("XDG_DATA_HOME", m_folder.filePath(u"data"_s).toUtf8());
        qputenv("XDG_CONFIG_HOME", m_folder.filePath(u"config"_s).toUtf8());
        VLCMsgIniW::set_language(Language::English);
        start();
        m_editor = page(u"CDlgElementEditor"_s);
        m_texture = qobject_cast<CDlgDesignButton*>(page(u"CDlgDesignButton"_s));
        choose(DXUT_CONTROL_BUTTON, 0, VisualState::Normal);
    }
    void TearDown() override
    {
        Editor::TearDown();
        qputenv("XDG_DATA_HOME", m_data_home);
        qputenv("XDG_CONFIG_HOME", m_config_home);
    }
    QComboBox* box(int id) { return qobject_cast<QComboBox*>(m_editor->control(id)); }
    void pick(int id, int row)
    {
        box(id)->setCurrentIndex(row);
        Q_EMIT box(id)->activated(row);
    }
    void choose(int owner, int part, VisualState state)
    {
        pick(6960, box(6960)->findData(owner));
        pick(6961, part);
        static_cast<QAbstractButton*>(m_editor->control(6971 + int(state)))->click();
    }
    void click(int id) { static_cast<QAbstractButton*>(m_texture->control(id))->click(); }
    QString picture_file(QSize size, QColor color = Qt::red)
    {
        const QString path = m_folder.filePath(u"%1x%2.png"_s.arg(size.width()).arg(size.height()));
        QImage image(size, QImage::Format_ARGB32);
        image.fill(color);
        EXPECT_TRUE(image.save(path));
        return path;
    }
    LookPart part() { return core().current_element(); }
    CElementPicture& preview() { return *qobject_cast<CElementPicture*>(m_texture->control(6434)); }

    QTemporaryDir m_folder;
    QByteArray m_data_home = qgetenv("XDG_DATA_HOME");
    QByteArray m_config_home = qgetenv("XDG_CONFIG_HOME");
    CChildDlg* m_editor = nullptr;
    CDlgDesignButton* m_texture = nullptr;
};

} // namespace

TEST_F(ElementEditor, chooses_parts_and_states_and_follows_the_selection)
{
    choose(DXUT_CONTROL_SLIDER, 1, VisualState::Hover);
    EXPECT_EQ(part(), (LookPart{DXUT_CONTROL_SLIDER, 1, VisualState::Hover}));
    choose(DXUT_CONTROL_PROGRESS, 0, VisualState::Hover);
    EXPECT_EQ(part().state, VisualState::Normal) << "it looks the same in every state";
    EXPECT_FALSE(m_editor->control(6972)->isEnabled());
    CDXUTControl* list = core().create_control(DXUT_CONTROL_LISTBOX, core().GetRootDialog(), {0, 0, 50, 50});
    core().SelectControl(list, false);
    m_world.broadcast(ui_selection_changed);
    EXPECT_EQ(part().owner, DXUT_CONTROL_LISTBOX);
    CDXUTDialog* dialog = core().create_dialog({0, 0, 90, 90});
    core().SelectDialog(dialog, false);
    m_world.broadcast(ui_selection_changed);
    EXPECT_EQ(part().owner, look_owner_dialog);
}

TEST_F(ElementEditor, a_smaller_picture_shrinks_the_region_and_a_larger_one_is_scaled_with_a_warning)
{
    const QRect room = core().default_rect(part());
    m_answers.files = {picture_file({40, 30})};
    click(6438);
    EXPECT_EQ(core().texture_rect(part()), QRect(room.topLeft(), QSize(40, 30)));
    EXPECT_EQ(core().texture(part()).pixel(5, 5), 0xffff0000u);
    EXPECT_EQ(core().look().atlas().part(room).pixel(60, 60), 0u) << "the rest of the room is clear";
    EXPECT_TRUE(m_answers.texts.isEmpty());
    EXPECT_EQ(preview().picture().size(), QSize(40, 30));
    m_answers.files = {picture_file({300, 20}, Qt::blue)};
    m_answers.buttons = {boxes::Button::Ok};
    click(6438);
    EXPECT_EQ(core().texture_rect(part()), room);
    EXPECT_EQ(core().texture(part()).pixel(95, 95), 0xff0000ffu);
    EXPECT_EQ(m_answers.texts,
              QStringList(u"Warning:Size of selected image larger than limit size,image will be compress!"_s));
    m_answers.files = {QString()};
    click(6438);
    EXPECT_EQ(m_scene->journal().step_count(), 2u);
    ASSERT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(core().texture_rect(part()).size(), QSize(40, 30));
}

TEST_F(ElementEditor, edges_leave_the_middle_of_a_smaller_picture_alone)
{
    {
        const UserAction action(m_scene->journal());
        core().set_edge_widths(part(), {30, 10, 10, 5});
    }
    const auto steps = m_scene->journal().step_count();
    m_answers.files = {picture_file({20, 15})};
    click(6438);
    EXPECT_EQ(core().edge_widths(part()), QMargins(9, 6, 3, 3)) << "in their shares";
    EXPECT_EQ(m_scene->journal().step_count(), steps + 1);
    ASSERT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(core().edge_widths(part()), QMargins(30, 10, 10, 5));
}

TEST_F(ElementEditor, a_colour_has_no_picture_and_a_file_that_is_none_changes_nothing)
{
    choose(DXUT_CONTROL_EDITBOX, 1 + edit_box_caret, VisualState::Normal);
    m_answers.buttons = {boxes::Button::Ok, boxes::Button::Ok};
    click(6438);
    EXPECT_EQ(m_answers.texts, QStringList(u"This element has no texture!"_s));
    choose(DXUT_CONTROL_BUTTON, 0, VisualState::Normal);
    m_answers.files = {m_folder.filePath(u"missing.png"_s)};
    click(6438);
    EXPECT_EQ(m_answers.texts.size(), 2);
    EXPECT_EQ(m_scene->journal().step_count(), 0u);
}

TEST_F(ElementEditor, an_editor_is_found_by_its_file_or_on_the_path_and_its_result_is_read_back)
{
    const QString script = m_folder.filePath(u"paint"_s);
    QFile program(script);
    ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    const QString edited = picture_file({30, 30}, Qt::green);
    program.write("#!/bin/sh\ncp '" + edited.toUtf8() + "' \"$1\"\n");
    program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    program.close();
    QDir().mkpath(QFileInfo(appinfo::get_preset_ini()).path());

    m_answers.buttons = {boxes::Button::Ok};
    click(6440);
    EXPECT_EQ(m_answers.texts,
              QStringList(u"You didn't set the default image editor,Please setup default model texture "
                          u"editor."_s));
    EXPECT_TRUE(m_texture->is_edited());
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", m_folder.path().toUtf8() + ":" + path);
    for (const QString& editor : {script, u"paint"_s}) {
        ASSERT_TRUE(inifile::set_str_list_to_ini(appinfo::get_preset_ini(), u"img_editors"_s,
                                                 {u"/no/such/editor"_s, u"nor this"_s, editor}));
        click(6440);
        // What the editor saves is seen without a click.
        EXPECT_TRUE(QTest::qWaitFor([&] { return core().texture(part()).pixel(40, 40) == 0xff00ff00u; }, 20000))
            << editor.toStdString();
        ASSERT_TRUE(m_scene->journal().undo());
    }
    qputenv("PATH", path);
    click(6441);
    EXPECT_EQ(core().texture(part()).pixel(40, 40), 0xff00ff00u);
    EXPECT_EQ(core().texture_rect(part()), core().default_rect(part())) << "at the size of the region";
    const std::size_t steps = m_scene->journal().step_count();
    click(6441);
    EXPECT_EQ(m_scene->journal().step_count(), steps) << "the same picture is no change";
}

TEST_F(ElementEditor, edges_are_typed_or_dragged_and_those_that_do_not_fit_are_not_taken)
{
    const auto type = [&](const QString& text) {
        m_answers.prompts.push_back(text);
        click(6444);
        return core().edge_widths(part());
    };
    EXPECT_EQ(type(u"10/11/12/13"_s), QMargins(10, 11, 12, 13));
    EXPECT_EQ(m_answers.texts.last(), u"Edge width(L/T/R/B)w=96;h=96"_s);
    EXPECT_EQ(type(u"20/x"_s), QMargins(20, 11, 12, 13)) << "the others stay";
    m_answers.buttons = {boxes::Button::Ok, boxes::Button::Ok};
    EXPECT_EQ(type(u"90/11/12/13"_s), QMargins(20, 11, 12, 13));
    EXPECT_EQ(m_answers.texts.last(), u"Edge size is large than rectangle size!"_s);
    EXPECT_EQ(type(u"-1/0/0/0"_s), QMargins(20, 11, 12, 13));
    m_answers.prompts.push_back(std::nullopt);
    click(6444);
    EXPECT_EQ(m_scene->journal().step_count(), 2u);

    preview().resize(200, 132);
    m_texture->show_element(); // A page that is not shown hears of its size later.
    const QPoint line(int(preview().line_of(0)), 60);
    const QPoint by(int(7 * preview().zoom()), 0);
    QTest::mousePress(&preview(), Qt::LeftButton, {}, line);
    QTest::mouseMove(&preview(), line + by / 2);
    QTest::mouseMove(&preview(), line + by);
    QTest::mouseRelease(&preview(), Qt::LeftButton, {}, line + by);
    EXPECT_NEAR(core().edge_widths(part()).left(), 27, 1);
    EXPECT_EQ(m_scene->journal().step_count(), 3u) << "one drag is one step";
}

TEST_F(ElementEditor, colours_of_parts_and_named_ones_show_at_once_and_are_reset)
{
    choose(DXUT_CONTROL_EDITBOX, 1 + edit_box_caret, VisualState::Normal);
    const auto color = [&] {
        return core().look().color(*look_owner(DXUT_CONTROL_EDITBOX), part().part, part().state);
    };
    pick(6964, box(6964)->findData(u"accent"_s));
    EXPECT_EQ(color(), 0xff6fd3e0u);
    pick(6967, box(6967)->findData(u"accent"_s));
    m_answers.dialogs.push_back([](QDialog& dialog) { dialog.accept(); });
    static_cast<QAbstractButton*>(m_editor->control(6968))->click();
    EXPECT_EQ(core().scene_style()->style_state().tokens.value(u"accent"_s), 0xff6fd3e0u);
    m_answers.prompts.push_back(u"glow"_s);
    static_cast<QAbstractButton*>(m_editor->control(6969))->click();
    EXPECT_GE(box(6964)->findData(u"glow"_s), 0);
    EXPECT_TRUE(m_editor->control(6970)->isEnabled());
    static_cast<QAbstractButton*>(m_editor->control(6970))->click();
    EXPECT_EQ(color(), 0xffbfeef5u);
    EXPECT_FALSE(m_editor->control(6970)->isEnabled());
    while (m_scene->journal().undo()) {}
    EXPECT_EQ(core().scene_style(), nullptr);
}

TEST_F(ElementEditor, shows_letters_for_texts_and_boxes_with_their_marks_and_pictures_for_the_rest)
{
    auto* texts = m_editor->findChild<CChildElementText*>();
    auto* check = m_editor->findChild<CDlgDesignCheck*>();
    const auto shown = [&] {
        return std::array{texts->isVisibleTo(m_editor), check->isVisibleTo(m_editor), m_texture->isVisibleTo(m_editor)};
    };
    EXPECT_EQ(shown(), (std::array{false, false, true}));
    choose(DXUT_CONTROL_BUTTON, 1, VisualState::Hover);
    EXPECT_EQ(shown(), (std::array{true, false, false}));
    static_cast<QAbstractButton*>(texts->control(7206))->click();
    EXPECT_TRUE(core().look().font_style(DXUT_CONTROL_BUTTON).bold);
    EXPECT_FALSE(core().look().font_style(DXUT_CONTROL_STATIC).bold);
    choose(DXUT_CONTROL_RADIOBUTTON, 0, VisualState::Normal);
    EXPECT_EQ(shown(), (std::array{false, true, true}));
    static_cast<QAbstractButton*>(check->control(7270 + int(VisualState::Pressed)))->click();
    EXPECT_EQ(part(), (LookPart{DXUT_CONTROL_RADIOBUTTON, 1, VisualState::Pressed})) << "the mark of one that is on";
    static_cast<QAbstractButton*>(check->control(7260 + int(VisualState::Disabled)))->click();
    EXPECT_EQ(part(), (LookPart{DXUT_CONTROL_RADIOBUTTON, 0, VisualState::Disabled}));
    choose(DXUT_CONTROL_RADIOBUTTON, 2, VisualState::Normal);
    EXPECT_EQ(shown(), (std::array{true, false, false}));
}

} // namespace tarn::test
