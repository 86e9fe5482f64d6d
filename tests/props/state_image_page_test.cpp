#include "gui_core/dxut_radio_button.h"
#include "support/editor_fixture.h"
#include "support/files.h"
#include "support/gui_fixture.h"
#include "widgets/button_st.h"
#include "widgets/super_edit.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

namespace tarn::test {

namespace {

enum Id : int {
    id_caption = 6352,
    id_checked = 6378,
    id_group = 6364,
    id_unchecked_image = 6160,
    id_checked_image = 6556,
    id_clear_unchecked = 6557,
    id_check_size = 6166,
    id_annotation = 6506,
    id_annotation_x = 6407,
    id_normal_image = 6107,
    id_pressed_image = 6109,
    id_clear_pressed = 6114,
    id_button_size = 6536,
};

class StateImagePage : public Editor {
protected:
    void SetUp() override
    {
        start();
        m_home = core().create_dialog({0, 0, 400, 300});
        put(file(u"red.png"_s), png(Qt::red, {40, 30}));
        put(file(u"blue & co.png"_s), png(Qt::blue, {12, 10}));
    }
    QString file(const QString& name) const { return m_folder.filePath(name); }
    CDXUTControl* make(int type) { return core().create_control(type, m_home, {0, 0, 80, 24}); }
    /// Shows the page for the type of the last, which is the current one.
    void select(std::initializer_list<CDXUTControl*> controls)
    {
        core().ClearCtrlSelection();
        for (CDXUTControl* control : controls)
            core().SelectControl(control, true);
        m_world.broadcast(ui_selection_changed);
        m_codes.clear();
        const int type = core().selection().current_control->GetType();
        m_page = page(type == DXUT_CONTROL_BUTTONST       ? u"CDlgPropButtonST"_s
                          : type == DXUT_CONTROL_CHECKBOX ? u"CDlgPropCheck"_s
                                                          : u"CDlgPropRadio"_s);
    }
    template <class Widget>
    Widget& at(int id)
    {
        return *qobject_cast<Widget*>(m_page->control(id));
    }
    void click(int id) { at<QAbstractButton>(id).click(); }
    void choose(int id, const QString& name)
    {
        m_answers.files.push_back(name.isEmpty() ? QString() : file(name));
        click(id);
    }
    static QString image(const CDXUTControl* control, const char* field)
    {
        return std::get<QString>(get(*control, field));
    }
    QString pictures() { return core().texture_names().join(u' '); }

    QTemporaryDir m_folder;
    CDXUTDialog* m_home = nullptr;
    CChildDlg* m_page = nullptr;
};

} // namespace

TEST_F(StateImagePage, a_picture_goes_to_every_selected_control_of_the_type_and_is_cleared_from_all)
{
    CDXUTControl* first = make(DXUT_CONTROL_CHECKBOX);
    CDXUTControl* second = make(DXUT_CONTROL_CHECKBOX);
    CDXUTControl* radio = make(DXUT_CONTROL_RADIOBUTTON);
    select({radio, second, first});
    choose(id_checked_image, u"red.png"_s);
    EXPECT_EQ(image(first, "image_checked"), u"red.png"_s);
    EXPECT_EQ(image(second, "image_checked"), u"red.png"_s);
    EXPECT_EQ(image(radio, "image_checked"), QString());
    EXPECT_EQ(image(first, "image_unchecked"), QString());
    EXPECT_EQ(at<CButtonST>(id_checked_image).text(), u"red.png"_s);
    ASSERT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(pictures(), QString()) << "one step takes the picture out again";
    EXPECT_EQ(image(second, "image_checked"), QString());
    ASSERT_TRUE(m_scene->journal().redo());

    choose(id_unchecked_image, u"blue & co.png"_s);
    EXPECT_EQ(at<CButtonST>(id_unchecked_image).text(), u"blue && co.png"_s);
    click(id_clear_unchecked);
    EXPECT_EQ(at<CButtonST>(id_unchecked_image).text(), QString());
    EXPECT_FALSE(at<CButtonST>(id_clear_unchecked).isEnabled());
    EXPECT_EQ(pictures(), u"red.png"_s);
    ASSERT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(pictures(), u"blue & co.png red.png"_s);
    EXPECT_EQ(image(second, "image_unchecked"), u"blue & co.png"_s);
}

TEST_F(StateImagePage, the_buttons_tell_the_files_names_without_folders)
{
    CDXUTControl* button = make(DXUT_CONTROL_BUTTONST);
    ASSERT_TRUE(set(*button, "image_pressed", u"skins/dark/down.png"_s));
    select({button});
    EXPECT_EQ(at<CButtonST>(id_pressed_image).text(), u"down.png"_s);
    EXPECT_EQ(at<CButtonST>(id_normal_image).text(), QString());
    click(id_clear_pressed);
    EXPECT_EQ(image(button, "image_pressed"), QString()) << "a picture that is missing can be cleared too";
}

TEST_F(StateImagePage, cancelling_and_files_that_are_no_pictures_change_nothing)
{
    CDXUTControl* button = make(DXUT_CONTROL_BUTTONST);
    select({button});
    choose(id_normal_image, u"red.png"_s);
    const std::size_t steps = m_scene->journal().step_count();
    choose(id_normal_image, {});
    put(file(u"text.png"_s), "no picture");
    m_answers.buttons = {boxes::Button::Ok};
    choose(id_normal_image, u"text.png"_s);
    EXPECT_TRUE(m_answers.texts.last().contains(file(u"text.png"_s)));
    EXPECT_EQ(image(button, "image_normal"), u"red.png"_s);
    EXPECT_EQ(m_scene->journal().step_count(), steps);
}

TEST_F(StateImagePage, sizing_to_pictures_stops_at_the_first_control_without_any)
{
    std::vector<CDXUTControl*> boxes;
    for (int i = 0; i < 3; ++i)
        boxes.push_back(make(DXUT_CONTROL_CHECKBOX));
    core().set_texture(u"red.png"_s, png(Qt::red, {40, 30}));
    core().set_texture(u"blue.png"_s, png(Qt::blue, {12, 10}));
    ASSERT_TRUE(set(*boxes[0], "image_checked", u"red.png"_s));
    ASSERT_TRUE(set(*boxes[1], "image_checked", u"missing.png"_s));
    ASSERT_TRUE(set(*boxes[2], "image_unchecked", u"red.png"_s));
    select({boxes[0], boxes[1], boxes[2]});
    m_answers.buttons = {boxes::Button::Ok};
    click(id_check_size);
    EXPECT_EQ(m_answers.texts, QStringList(u"请先设置贴图！"_s));
    EXPECT_EQ(boxes[0]->rect().size(), QSizeF(40, 30));
    EXPECT_EQ(boxes[2]->rect().size(), QSizeF(80, 24));
    EXPECT_EQ(m_codes, std::vector<int>{ui_control_properties});

    ASSERT_TRUE(set(*boxes[1], "image_checked", u"red.png"_s));
    ASSERT_TRUE(set(*boxes[2], "image_checked", u"blue.png"_s));
    click(id_check_size);
    EXPECT_EQ(boxes[2]->rect().size(), QSizeF(40, 30)) << "the unchecked picture comes first";
    ASSERT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(boxes[1]->rect().size(), QSizeF(80, 24));

    CDXUTControl* button = make(DXUT_CONTROL_BUTTONST);
    select({button});
    m_answers.buttons = {boxes::Button::Ok};
    click(id_button_size);
    EXPECT_EQ(m_answers.texts.last(), u"请先设置图片！"_s) << "image buttons say it in their own words";
    ASSERT_TRUE(set(*button, "image_pressed", u"blue.png"_s));
    click(id_button_size);
    EXPECT_EQ(button->rect().size(), QSizeF(12, 10));
}

TEST_F(StateImagePage, caption_and_state_go_to_every_selected_control_of_the_type)
{
    auto* first = static_cast<CDXUTCheckBox*>(make(DXUT_CONTROL_CHECKBOX));
    auto* second = static_cast<CDXUTCheckBox*>(make(DXUT_CONTROL_CHECKBOX));
    auto* button = static_cast<CDXUTStatic*>(make(DXUT_CONTROL_BUTTON));
    select({button, second, first});
    const QString caption = button->text();
    int redraws = 0;
    m_world.on_redraw = [&redraws] { ++redraws; };
    at<QLineEdit>(id_caption).selectAll();
    QTest::keyClicks(&at<QLineEdit>(id_caption), u"on"_s);
    click(id_checked);
    EXPECT_EQ(first->text(), u"on"_s);
    EXPECT_EQ(second->text(), u"on"_s);
    EXPECT_EQ(button->text(), caption);
    EXPECT_TRUE(first->GetChecked() && second->GetChecked());
    EXPECT_TRUE(m_codes.empty());
    EXPECT_EQ(redraws, 3);
    ASSERT_TRUE(m_scene->journal().undo() && m_scene->journal().undo());
    EXPECT_EQ(second->text(), second->name()) << "one word is one step";
}

TEST_F(StateImagePage, a_group_is_given_with_enter_and_a_drop_leaves_it_alone)
{
    auto* first = static_cast<CDXUTRadioButton*>(make(DXUT_CONTROL_RADIOBUTTON));
    auto* second = static_cast<CDXUTRadioButton*>(make(DXUT_CONTROL_RADIOBUTTON));
    select({first, second});
    auto& edit = at<CSuperEdit>(id_group);
    auto* line = edit.findChild<QLineEdit*>();
    line->selectAll();
    QTest::keyClicks(line, u"7"_s);
    EXPECT_EQ(second->group(), 0);
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(first->group(), 7);
    EXPECT_EQ(second->group(), 7);
    line->selectAll();
    QTest::keyClicks(line, u"9"_s);
    Q_EMIT edit.editingFinished(); // The focus goes.
    EXPECT_EQ(second->group(), 7);
    EXPECT_EQ(edit.get_pos(), 7);

    click(id_checked);
    EXPECT_TRUE(second->GetChecked());
    EXPECT_FALSE(first->GetChecked()) << "one of a group";
}

TEST_F(StateImagePage, the_annotation_is_written_to_every_selected_image_button)
{
    CDXUTControl* first = make(DXUT_CONTROL_BUTTONST);
    CDXUTControl* second = make(DXUT_CONTROL_BUTTONST);
    select({first, second});
    click(id_annotation);
    auto* line = at<CSuperEdit>(id_annotation_x).findChild<QLineEdit*>();
    line->selectAll();
    QTest::keyClicks(line, u"-12.4"_s);
    EXPECT_EQ(get(*first, "annotation_mode"), Value(true));
    EXPECT_EQ(get(*first, "annotation_x"), Value(qint64(-12)));
    EXPECT_EQ(get(*second, "annotation_x"), Value(qint64(-12)));
}

} // namespace tarn::test
