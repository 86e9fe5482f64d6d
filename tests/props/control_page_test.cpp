#include "support/attributes.h"
#include "support/editor_fixture.h"

#include "frame/dlg_group.h"
#include "frame/rollup.h"
#include "gui_core/dxut_static.h"
#include "page_base/pop_dlg_color.h"
#include "widgets/color_swatch.h"
#include "widgets/super_edit.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

namespace tarn::test {

namespace {

enum Id : int {
    id_name = 6396,
    id_swatch = 6199,
    id_visible = 6335,
    id_enabled = 6349,
    id_locked = 6355,
    id_x = 6337,
    id_width = 6026,
    id_height = 6341,
    id_keep_ratio = 6345,
    id_tab_order = 6416,
    id_anchor_right = 6491,
};

class ControlPage : public Editor {
protected:
    void SetUp() override
    {
        start();
        CDXUTDialog* dialog = core().create_dialog(QRect(0, 0, 400, 300));
        for (int i = 0; i < 3; ++i)
            m_controls.push_back(core().create_control(DXUT_CONTROL_BUTTON, dialog, QRectF(10 * i, 0, 60, 20)));
        m_scene->journal().clear();
    }
    void select(std::initializer_list<int> which)
    {
        core().ClearCtrlSelection();
        for (const int index : which)
            core().SelectControl(m_controls[size_t(index)], true);
        tell(ui_selection_changed);
    }
    void tell(int code)
    {
        m_world.broadcast(code);
        m_codes.clear();
    }
    template <class Widget>
    Widget& on_page(int id)
    {
        return *dynamic_cast<Widget*>(page(u"CDlgPropControl"_s)->control(id));
    }
    template <class Widget>
    Widget& on_location(int id)
    {
        return *dynamic_cast<Widget*>(page(u"CChildCtrlDimension"_s)->control(id));
    }
    void type(QWidget& edit, const QString& text)
    {
        auto* line = edit.findChild<QLineEdit*>();
        if (!line)
            line = dynamic_cast<QLineEdit*>(&edit);
        line->selectAll();
        QTest::keyClicks(line, text);
    }
    QStringList names() const
    {
        QStringList all;
        for (const CDXUTControl* control : m_controls)
            all.append(control->name());
        return all;
    }
    int undo_steps()
    {
        int steps = 0;
        while (m_scene->journal().undo())
            ++steps;
        return steps;
    }

    std::vector<CDXUTControl*> m_controls;
};

} // namespace

TEST_F(ControlPage, a_click_on_one_flag_writes_all_three_to_every_selected_control)
{
    (void)set(*m_controls[0], "enabled", false);
    m_controls[1]->SetVisible(false);
    select({1, 2, 0}); // The last is the current one, whose flags are shown.
    EXPECT_FALSE(on_page<QCheckBox>(id_enabled).isChecked());
    m_scene->journal().clear();

    on_page<QCheckBox>(id_locked).click();
    for (const CDXUTControl* control : m_controls) {
        EXPECT_TRUE(control->locked());
        EXPECT_TRUE(control->GetVisible());
        EXPECT_FALSE(control->GetEnabled());
    }
    EXPECT_EQ(m_codes, std::vector{int(ui_control_properties)});

    EXPECT_EQ(undo_steps(), 1);
    EXPECT_FALSE(m_controls[1]->GetVisible());
    EXPECT_FALSE(m_controls[2]->locked());
}

TEST_F(ControlPage, typing_a_name_renames_the_selection_with_each_key_and_leaves_the_cursor_alone)
{
    select({0, 2});
    auto& edit = on_page<QLineEdit>(id_name);
    const QString third = m_controls[1]->name();
    QTest::keyClick(&edit, Qt::Key_Home);
    QTest::keyClicks(&edit, u"Go"_s);
    EXPECT_EQ(edit.cursorPosition(), 2);
    EXPECT_EQ(names(), (QStringList{edit.text(), third, edit.text()}));
    EXPECT_TRUE(edit.text().startsWith(u"Go"_s));
    EXPECT_EQ(m_codes, (std::vector<int>(2, ui_control_properties)));

    EXPECT_EQ(undo_steps(), 1) << "typing is one step";
    tell(ui_full_refresh);
    EXPECT_EQ(edit.text(), m_controls[2]->name());
}

TEST_F(ControlPage, names_in_any_script_go_through_the_page_whole)
{
    const QString name = u"按钮 زر 👩‍🚀 é̂ "_s + QString(2000, u'湖');
    (void)set(*m_controls[0], "name", name);
    select({0});
    auto& edit = on_page<QLineEdit>(id_name);
    EXPECT_EQ(edit.text(), name);
    QTest::keyClick(&edit, Qt::Key_End);
    QTest::keyClick(&edit, Qt::Key_Backspace);
    EXPECT_EQ(m_controls[0]->name(), name.chopped(1));
}

TEST_F(ControlPage, a_picked_colour_goes_to_all_and_a_cancelled_one_to_none)
{
    select({0, 1});
    int redraws = 0;
    m_world.on_redraw = [&redraws] { ++redraws; };
    m_answers.dialogs.push_back([](QDialog& picker) { picker.reject(); });
    on_page<CColorSwatch>(id_swatch).click();
    EXPECT_EQ(m_controls[0]->color_tag(), 0xffffffffu);
    EXPECT_EQ(redraws, 1) << "the views are drawn anyway";

    m_answers.dialogs.push_back([](QDialog& picker) {
        auto* alpha = picker.findChild<CChildDlg*>()->control(6411);
        QTest::keyClicks(alpha->findChild<QLineEdit*>(), u"\b\b\b128"_s);
        picker.accept();
    });
    on_page<CColorSwatch>(id_swatch).click();
    EXPECT_EQ(m_controls[0]->color_tag() >> 24, m_controls[1]->color_tag() >> 24);
    EXPECT_NE(m_controls[0]->color_tag(), 0xffffffffu);
    EXPECT_EQ(m_controls[2]->color_tag(), 0xffffffffu);
    EXPECT_EQ(on_page<CColorSwatch>(id_swatch).argb(), m_controls[0]->color_tag());
    EXPECT_TRUE(m_codes.empty()) << "no page is told of a colour";
}

TEST_F(ControlPage, is_disabled_without_a_current_control_and_while_the_interface_runs)
{
    select({0});
    EXPECT_TRUE(on_page<QLineEdit>(id_name).isEnabled());
    core().EnableGui(false);
    tell(ui_scene_changed);
    EXPECT_FALSE(on_page<QLineEdit>(id_name).isEnabled());
    EXPECT_FALSE(on_location<CSuperEdit>(id_x).isEnabled());
    core().EnableGui(true);
    core().ClearCtrlSelection();
    tell(ui_selection_changed);
    EXPECT_FALSE(on_page<QLineEdit>(id_name).isEnabled());
    EXPECT_FALSE(on_page<CColorSwatch>(id_swatch).isEnabled());
}

TEST_F(ControlPage, only_the_attributes_of_the_type_are_unfolded_at_first)
{
    const auto* rollup = page(u"CDlgPropControl"_s)->findChild<CMyRollup*>();
    ASSERT_EQ(rollup->page_count(), 4);
    EXPECT_FALSE(rollup->is_expanded(0));
    EXPECT_FALSE(rollup->is_expanded(1));
    EXPECT_TRUE(rollup->is_expanded(2));
    EXPECT_FALSE(rollup->is_expanded(3));
}

TEST_F(ControlPage, a_place_on_which_the_selection_disagrees_is_empty_until_it_is_typed)
{
    select({0, 1, 2});
    auto& x = on_location<CSuperEdit>(id_x);
    EXPECT_FALSE(x.value());
    EXPECT_EQ(on_location<CSuperEdit>(id_width).get_pos(), 60);
    tell(ui_control_properties);
    EXPECT_EQ(m_controls[1]->x(), 10) << "showing writes nothing";

    type(x, u"20"_s); // One of them stands there already.
    for (const CDXUTControl* control : m_controls)
        EXPECT_EQ(control->x(), 20);
    EXPECT_EQ(undo_steps(), 1);
    EXPECT_EQ(m_controls[0]->x(), 0);
}

TEST_F(ControlPage, the_kept_ratio_outlives_a_side_of_no_length)
{
    select({0});
    on_location<QCheckBox>(id_keep_ratio).click();
    type(on_location<CSuperEdit>(id_width), u"0"_s);
    EXPECT_EQ(m_controls[0]->height(), 0);
    type(on_location<CSuperEdit>(id_width), u"90"_s);
    EXPECT_EQ(m_controls[0]->height(), 30);
    type(on_location<CSuperEdit>(id_height), u"10"_s);
    EXPECT_EQ(m_controls[0]->width(), 30);

    m_controls[1]->SetSize(50, 0);
    on_location<QCheckBox>(id_keep_ratio).click();
    select({1}); // No ratio can be had from it.
    on_location<QCheckBox>(id_keep_ratio).click();
    type(on_location<CSuperEdit>(id_width), u"80"_s);
    EXPECT_EQ(m_controls[1]->height(), 0);
}

TEST_F(ControlPage, an_anchor_is_one_of_nine_buttons)
{
    select({0, 1});
    auto& right = on_location<QAbstractButton>(id_anchor_right);
    right.click();
    right.click();
    EXPECT_TRUE(right.isChecked()) << "a second click keeps it";
    EXPECT_EQ(m_controls[1]->align_type(), 3);
    EXPECT_EQ(m_controls[1]->x(), 10) << "the control stays where it is";
    EXPECT_EQ(undo_steps(), 1);
}

TEST_F(ControlPage, a_page_of_a_type_works_only_on_controls_of_that_type)
{
    CDXUTDialog* dialog = m_controls[0]->dialog();
    auto* text = static_cast<CDXUTStatic*>(core().create_control(DXUT_CONTROL_STATIC, dialog, QRectF(0, 50, 60, 20)));
    core().SelectControl(m_controls[0], false);
    core().SelectControl(text, true);
    tell(ui_selection_changed);
    auto* group = page(u"CChildControls"_s)->findChild<CDlgGroup*>();
    EXPECT_EQ(group->shown_id(), 6009);
    auto* edit = qobject_cast<QPlainTextEdit*>(page(u"CDlgPropStatic"_s)->control(6352));
    EXPECT_EQ(edit->toPlainText(), text->text());
    const QString caption = static_cast<CDXUTStatic*>(m_controls[0])->text();
    m_scene->journal().clear();

    QTest::keyClick(edit, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClicks(edit, u" and"_s);
    QTest::keyClick(edit, Qt::Key_Return);
    QTest::keyClicks(edit, u"more"_s);
    EXPECT_TRUE(text->text().endsWith(u" and\nmore"_s));
    EXPECT_EQ(static_cast<CDXUTStatic*>(m_controls[0])->text(), caption) << "a button has a text too";
    for (const Qt::FocusReason reason : {Qt::PopupFocusReason, Qt::TabFocusReason}) {
        QFocusEvent leave(QEvent::FocusOut, reason);
        QApplication::sendEvent(edit, &leave);
        QTest::keyClicks(edit, u" still"_s);
    }
    EXPECT_EQ(undo_steps(), 2) << "the edit's own menu does not end a visit";

    core().ClearCtrlSelection();
    tell(ui_selection_changed);
    EXPECT_EQ(group->shown_id(), 6009) << "nothing selected leaves the page where it was";
    EXPECT_FALSE(edit->isEnabled());
}

TEST_F(ControlPage, the_view_numbers_the_controls_while_their_tab_order_is_edited)
{
    CChildDlg* location = page(u"CChildCtrlDimension"_s);
    const QWidget view;
    const auto shown_after = [&](const QWidget* focused) {
        Q_EMIT qApp->focusChanged(nullptr, const_cast<QWidget*>(focused));
        return core().view_aids().tab_numbers;
    };
    EXPECT_FALSE(shown_after(location->control(id_x)));
    EXPECT_TRUE(shown_after(location->control(id_tab_order)->findChild<QLineEdit*>()));
    EXPECT_TRUE(shown_after(&view)) << "there the next control is clicked";
    EXPECT_TRUE(shown_after(nullptr)) << "another program has the focus";
    EXPECT_FALSE(shown_after(location->control(id_x)));
}

TEST_F(ControlPage, a_text_without_end_is_shown_in_part_and_kept_and_none_can_be_pasted)
{
    auto* label = static_cast<CDXUTStatic*>(
        core().create_control(DXUT_CONTROL_STATIC, m_controls[0]->dialog(), QRectF(0, 0, 60, 20)));
    const QString endless(999'999, u'x');
    label->SetText(endless);
    core().SelectControl(label, false);
    tell(ui_selection_changed);
    auto* edit = qobject_cast<QPlainTextEdit*>(page(u"CDlgPropStatic"_s)->control(6352));
    EXPECT_TRUE(edit->isReadOnly());
    EXPECT_LT(edit->toPlainText().size(), 1000);
    QTest::keyClicks(edit, u"more"_s);
    EXPECT_EQ(label->text(), endless);

    label->SetText(u"one\n"_s.repeated(20'000));
    tell(ui_control_properties);
    EXPECT_FALSE(edit->isReadOnly()) << "of many lines each costs little";
    EXPECT_EQ(edit->toPlainText(), label->text());
    QApplication::clipboard()->setText(endless);
    edit->selectAll();
    edit->paste();
    EXPECT_EQ(label->text(), u"one\n"_s.repeated(20'000));
    QApplication::clipboard()->setText(u"two"_s);
    edit->paste();
    EXPECT_EQ(label->text(), u"two"_s);

    ASSERT_TRUE(set(*label, "name", endless).ok());
    tell(ui_control_properties);
    auto& name = on_page<QLineEdit>(id_name);
    type(name, u"n"_s);
    EXPECT_EQ(label->name(), endless);
}

} // namespace tarn::test
