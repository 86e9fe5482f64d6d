#include "design/dlg_element_customize.h"

#include "core/field.h"
#include "core/res_handle_man.h"
#include "gui_core/control_style.h"
#include "gui_core/interface_font.h"
#include "page_base/pop_dlg_color.h"
#include "support/attributes.h"
#include "support/editor_fixture.h"
#include "support/files.h"
#include "widgets/button_st.h"
#include "widgets/color_swatch.h"
#include "widgets/super_edit.h"

#include <QBuffer>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

namespace tarn::test {

namespace {

/// Whether the author chose anything of the control's look.
bool has_style(const CDXUTControl& control)
{
    for (const char* name : {"style_images", "style_colors", "style_text_colors", "font_family", "font_italic",
                             "text_color", "font_size", "bold"})
        if (const FieldBase* field = control.fields().find(name); field && !field->is_default(control.shown_state()))
            return true;
    return false;
}

enum Id : int {
    id_ok = 1,
    id_cancel = 2,
    id_element = 6621,
    id_state = 6622,
    id_choose_picture = 6625,
    id_tint = 6626,
    id_text_color = 6627,
    id_family = 6628,
    id_size = 6629,
    id_bold = 6630,
    id_italic = 6631,
    id_reset_state = 6632,
    id_reset_all = 6633,
};

QByteArray png(QColor color)
{
    QImage image(8, 8, QImage::Format_ARGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

class ElementCustomize : public Editor {
protected:
    void SetUp() override
    {
        start();
        {
            const CResHandleMan guard(gui_ui_resources());
            ASSERT_TRUE(m_page.Create(6561, &m_side));
        }
        m_page.on_world_created(&m_world);
        m_world.on_broadcast = [this](int code) {
            m_codes.push_back(code);
            m_page.update_ui(code);
        };
        CDXUTDialog* home = core().create_dialog({0, 0, 400, 300});
        for (CDXUTControl** made : {&m_first, &m_second})
            *made = core().create_control(DXUT_CONTROL_BUTTON, home, {0, 0, 80, 24});
        m_slider = core().create_control(DXUT_CONTROL_SLIDER, home, {0, 0, 80, 24});
        select({m_first, m_second, m_slider, m_first});
    }
    /// The last becomes the current one.
    void select(std::initializer_list<CDXUTControl*> controls)
    {
        core().ClearCtrlSelection();
        for (CDXUTControl* control : controls)
            core().SelectControl(control, true);
        m_world.broadcast(ui_selection_changed);
        m_codes.clear();
    }
    template <class Widget>
    Widget& at(int id)
    {
        return *qobject_cast<Widget*>(m_page.control(id));
    }
    bool enabled(int id) { return m_page.control(id)->isEnabled(); }
    void click(int id) { at<QAbstractButton>(id).click(); }
    void choose(int id, int row)
    {
        at<QComboBox>(id).setCurrentIndex(row);
        Q_EMIT at<QComboBox>(id).activated(row);
    }
    void pick_color(int id, quint32 argb)
    {
        m_answers.dialogs.push_back([argb](QDialog& dialog) {
            auto* page = dialog.findChild<CChildDlg*>(u"CPopDlgColor"_s);
            int shift = 24;
            for (const int channel : {6411, 6397, 6401, 6405}) {
                auto* edit = qobject_cast<CSuperEdit*>(page->control(channel));
                edit->set_pos(argb >> shift & 0xff);
                Q_EMIT edit->text_changed_by_user(edit->get_pos());
                shift -= 8;
            }
            qobject_cast<QAbstractButton*>(page->control(id_ok))->click();
        });
        click(id);
    }
    Journal& journal() { return m_scene->journal(); }

    CDlgElementCustomize m_page;
    CDXUTControl* m_first = nullptr;
    CDXUTControl* m_second = nullptr;
    CDXUTControl* m_slider = nullptr;
};

TEST_F(ElementCustomize, colours_go_to_every_selected_control_of_the_type_as_one_step)
{
    choose(id_state, int(VisualState::Hover));
    pick_color(id_tint, 0x80ff0000);
    const QString look = u"Body.hover"_s;
    EXPECT_EQ(at<CColorSwatch>(id_tint).argb(), 0x80ff0000u);
    pick_color(id_text_color, 0xff00ff00);
    EXPECT_FALSE(has_style(*m_first)) << "it waits";
    EXPECT_TRUE(m_codes.empty());
    click(id_ok);
    EXPECT_EQ(m_first->style_color(look), 0x80ff0000u);
    EXPECT_EQ(m_second->style_color(look), 0x80ff0000u);
    EXPECT_EQ(m_slider->style_color(look), 0u) << "another type";
    EXPECT_EQ(std::get<NumberMap>(get(*m_second, "style_text_colors")).value(u"hover"_s), 0xff00ff00u);
    EXPECT_EQ(m_codes, std::vector<int>{ui_control_properties});
    EXPECT_TRUE(journal().undo());
    EXPECT_FALSE(has_style(*m_first) || has_style(*m_second));
    m_answers.dialogs.push_back([](QDialog& dialog) { dialog.reject(); });
    click(id_tint);
    EXPECT_FALSE(enabled(id_ok)) << "cancelled";
}

TEST_F(ElementCustomize, edits_wait_for_their_objects_until_ok_or_cancel)
{
    const QString look = u"Body.normal"_s;
    pick_color(id_tint, 0xffff0000);
    EXPECT_TRUE(enabled(id_ok) && enabled(id_cancel));
    select({m_slider});
    EXPECT_FALSE(enabled(id_ok));
    select({m_second});
    EXPECT_TRUE(enabled(id_ok)) << "they wait for this one, too";
    EXPECT_EQ(at<CColorSwatch>(id_tint).argb(), 0xffff0000u);
    click(id_cancel);
    EXPECT_FALSE(enabled(id_ok));
    EXPECT_EQ(at<CColorSwatch>(id_tint).argb(), 0u);
    select({m_first});
    click(id_ok);
    EXPECT_EQ(m_first->style_color(look), 0xffff0000u);
    EXPECT_FALSE(has_style(*m_second));
    EXPECT_FALSE(enabled(id_ok));

    click(id_bold);
    m_scene->RemoveCtrl(m_first);
    m_world.broadcast(ui_selection_changed);
    ASSERT_TRUE(journal().undo());
    select({m_first});
    EXPECT_FALSE(enabled(id_ok)) << "what was taken out of the scene has no edits any more";
}

TEST_F(ElementCustomize, a_picture_comes_from_the_scene_or_a_file_and_is_taken_in_once)
{
    const QTemporaryDir folder;
    const QString red = folder.filePath(u"body.png"_s);
    put(red, png(Qt::red));
    const QString look = u"Body.normal"_s;
    core().set_texture(u"body.png"_s, png(Qt::blue));
    m_answers.commands = {2, 2, 2, 10, 1, 2};
    m_answers.files = {red, red, red, QString()};
    click(id_choose_picture);
    EXPECT_EQ(core().texture_names().size(), 1) << "it waits";
    click(id_cancel);
    for (const bool again : {false, true}) {
        click(id_choose_picture);
        click(id_ok);
        EXPECT_EQ(m_first->style_image(look), u"body-2.png"_s) << "the name was taken by another picture";
        EXPECT_EQ(m_second->style_image(look), u"body-2.png"_s);
        EXPECT_EQ(core().texture_names().size(), 2) << (again ? "the same content again" : "");
    }
    click(id_choose_picture);
    EXPECT_FALSE(enabled(id_ok)) << "the first of the list, which it has";
    click(id_choose_picture);
    click(id_ok);
    EXPECT_EQ(m_first->style_image(look), QString());
    EXPECT_EQ(core().texture_names().size(), 1) << "nothing shows it any more";
    click(id_choose_picture);
    EXPECT_FALSE(enabled(id_ok)) << "cancelled";
    ASSERT_TRUE(journal().undo());
    EXPECT_EQ(m_first->style_image(look), u"body-2.png"_s);
    EXPECT_EQ(core().texture_names().size(), 2);
}

TEST_F(ElementCustomize, a_file_that_is_no_picture_gives_one_message_and_changes_nothing)
{
    const QTemporaryDir folder;
    const QString bad = folder.filePath(u"bad.png"_s);
    put(bad, png(Qt::red).left(30));
    for (const QString& path : {bad, folder.filePath(u"missing.png"_s)}) {
        m_answers.texts.clear();
        m_answers.commands = {2};
        m_answers.files = {path};
        m_answers.buttons = {boxes::Button::Ok};
        click(id_choose_picture);
        EXPECT_TRUE(m_answers.texts.last().contains(path));
        EXPECT_TRUE(m_answers.buttons.empty());
    }
    EXPECT_TRUE(core().texture_names().isEmpty());
    EXPECT_FALSE(has_style(*m_first));
}

TEST_F(ElementCustomize, the_font_is_written_and_shown)
{
    click(id_bold);
    click(id_italic);
    auto& size = at<CSuperEdit>(id_size);
    EXPECT_EQ(size.get_pos(), default_font_size) << "the style's";
    size.set_pos(31);
    Q_EMIT size.text_changed_by_user(31);
    click(id_ok);
    (void)set(*m_first, "font_family", u"No Such Font"_s);
    m_world.broadcast(ui_control_properties);
    EXPECT_EQ(at<QComboBox>(id_family).currentText(), u"No Such Font"_s);
    EXPECT_TRUE(m_second->font_italic());
    EXPECT_EQ(std::get<qint64>(m_second->property(*m_second->fields().find("font_size"))), 31);
    EXPECT_EQ(std::get<bool>(m_second->property(*m_second->fields().find("bold"))), true);
    choose(id_family, 0);
    click(id_ok);
    EXPECT_EQ(m_first->font_family(), QString());
    EXPECT_EQ(at<QComboBox>(id_family).findText(u"No Such Font"_s), -1);
}

TEST_F(ElementCustomize, resetting_is_offered_where_there_is_something_to_reset)
{
    EXPECT_FALSE(enabled(id_reset_state) || enabled(id_reset_all));
    (void)set_entry(*m_second, "style_colors", u"Body.pressed"_s, qint64(5));
    (void)set(*m_second, "font_italic", true);
    m_world.broadcast(ui_control_properties);
    EXPECT_FALSE(enabled(id_reset_state)) << "another state is shown";
    EXPECT_TRUE(enabled(id_reset_all));
    choose(id_state, int(VisualState::Pressed));
    ASSERT_TRUE(enabled(id_reset_state));
    click(id_reset_state);
    EXPECT_FALSE(enabled(id_reset_state));
    click(id_ok);
    EXPECT_TRUE(m_second->font_italic());
    EXPECT_EQ(m_second->style_color(u"Body.pressed"_s), 0u);
    click(id_reset_all);
    EXPECT_FALSE(enabled(id_reset_all));
    click(id_ok);
    EXPECT_FALSE(has_style(*m_second));
}

TEST_F(ElementCustomize, ok_is_one_step_of_undo_however_much_was_typed)
{
    auto* line = at<CSuperEdit>(id_size).findChild<QLineEdit*>();
    for (const auto& text : {u"30"_s, u"40"_s}) {
        line->selectAll();
        QTest::keyClicks(line, text);
        QTest::keyClick(line, Qt::Key_Return);
    }
    click(id_ok);
    EXPECT_EQ(std::get<qint64>(m_second->property(*m_second->fields().find("font_size"))), 40);
    EXPECT_TRUE(m_scene->journal().undo());
    m_page.update_ui(ui_full_refresh);
    EXPECT_EQ(at<CSuperEdit>(id_size).get_pos(), default_font_size);
}

TEST_F(ElementCustomize, only_what_applies_to_the_type_can_be_used)
{
    const auto states = [this] {
        QList<bool> on;
        for (const int id : {id_element, id_state, id_choose_picture, id_text_color, id_family, id_size, id_italic})
            on.append(enabled(id));
        return on;
    };
    EXPECT_EQ(states(), QList<bool>({true, true, true, true, true, true, true}));
    select({m_slider});
    EXPECT_EQ(states(), QList<bool>({true, true, true, false, false, false, false}));
    EXPECT_EQ(at<QComboBox>(id_element).count(), 2);
    choose(id_element, 1);
    pick_color(id_tint, 0xff0000ff);
    click(id_ok);
    EXPECT_EQ(m_slider->style_color(u"Thumb.normal"_s), 0xff0000ffu);
    select({core().create_control(DXUT_CONTROL_COMBOBOX, m_first->dialog(), {0, 0, 80, 24})});
    EXPECT_EQ(states(), QList<bool>({true, true, true, true, true, false, true}));
    select({core().create_control(DXUT_CONTROL_STATIC, m_first->dialog(), {0, 0, 80, 24})});
    EXPECT_EQ(states(), QList<bool>({false, true, false, true, true, true, true}));
    select({core().create_control(DXUT_CONTROL_MAP, m_first->dialog(), {0, 0, 80, 24})});
    EXPECT_EQ(states(), QList<bool>(7, false));
    select({m_first});
    core().EnableGui(false);
    m_world.broadcast(ui_scene_changed);
    EXPECT_EQ(states(), QList<bool>(7, false));
    core().EnableGui(true);
    core().SelectDialog(m_first->dialog(), false);
    m_world.broadcast(ui_selection_changed);
    EXPECT_EQ(states(), QList<bool>(7, false));
}

} // namespace

} // namespace tarn::test
