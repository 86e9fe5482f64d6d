#include "design/child_element_text.h"
#include "gui_core/gui_style.h"
#include "gui_core/style_look.h"
#include "gui_scene/font_library.h"
#include "shell/prop_bar.h"
#include "support/editor_fixture.h"
#include "support/test_font.h"
#include "widgets/color_swatch.h"
#include "widgets/super_edit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTest>

namespace tarn::test {

namespace {

class FontPage : public Editor {
protected:
    void SetUp() override
    {
        VLCMsgIniW::set_language(Language::English);
        start();
        m_page = page(u"CDlgDesignFont"_s);
        m_page->setVisible(true);
        pick(7200, box(7200)->findData(DXUT_CONTROL_STATIC));
    }
    QComboBox* box(int id) { return qobject_cast<QComboBox*>(m_page->control(id)); }
    void pick(int id, int row)
    {
        box(id)->setCurrentIndex(row);
        Q_EMIT box(id)->activated(row);
    }
    void click(int id) { qobject_cast<QAbstractButton*>(m_page->control(id))->click(); }
    /// Of the part of the page that has the letters.
    template <typename Widget>
    Widget* letters(int id)
    {
        return qobject_cast<Widget*>(m_page->findChild<CChildElementText*>()->control(id));
    }
    QString font_file()
    {
        QFile file(m_folder.filePath(u"squares.ttf"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(TestFont{.copyright = u"Somebody"_s, .licence = u"Use it."_s}.bytes());
        return file.fileName();
    }
    QString family() { return core().look().family(DXUT_CONTROL_STATIC); }

    QTemporaryDir m_folder;
    CChildDlg* m_page = nullptr;
};

} // namespace

TEST_F(FontPage, takes_a_font_in_shows_its_licence_and_lets_it_go_again)
{
    EXPECT_FALSE(m_page->control(7204)->isEnabled()) << "the usual font is not of the package";
    m_answers.files = {font_file()};
    click(7203);
    EXPECT_EQ(family(), u"Tarn Squares"_s);
    EXPECT_EQ(m_scene->journal().step_count(), 1u);
    EXPECT_EQ(box(7202)->currentText(), u"Tarn Squares"_s);
    EXPECT_EQ(box(7202)->itemText(1), u"— In the package —"_s);
    EXPECT_FALSE(static_cast<QStandardItemModel*>(box(7202)->model())->item(1)->isEnabled());
    auto* notice = qobject_cast<QPlainTextEdit*>(m_page->control(7240));
    EXPECT_EQ(notice->toPlainText(), u"Somebody\n\nUse it."_s);
    EXPECT_FALSE(notice->parentWidget()->isHidden());

    m_answers.buttons = {boxes::Button::Cancel, boxes::Button::Ok};
    click(7204);
    EXPECT_EQ(family(), u"Tarn Squares"_s) << "cancelled";
    click(7204);
    EXPECT_EQ(family(), QString());
    EXPECT_TRUE(m_scene->fonts().fonts().empty());
    EXPECT_TRUE(notice->parentWidget()->isHidden());
    ASSERT_TRUE(m_scene->journal().undo());
    m_world.broadcast(ui_scene_changed);
    EXPECT_EQ(box(7202)->currentText(), u"Tarn Squares"_s);

    m_answers.files = {QString(), m_folder.filePath(u"missing.ttf"_s)};
    m_answers.buttons = {boxes::Button::Ok};
    click(7203);
    click(7203);
    EXPECT_EQ(m_scene->journal().step_count(), 2u);
    EXPECT_TRUE(m_answers.filters.first().contains(u"*.otf"_s));
}

TEST_F(FontPage, size_style_and_colours_are_steps_of_undo)
{
    auto* size = letters<CSuperEdit>(7205);
    size->setFocus();
    size->selectAll();
    QTest::keyClicks(size, u"22"_s);
    EXPECT_EQ(core().look().font_size(DXUT_CONTROL_STATIC), 22);
    letters<QCheckBox>(7206)->click();
    letters<QCheckBox>(7208)->click();
    EXPECT_EQ(core().look().font_style(DXUT_CONTROL_STATIC), (FontStyle{.bold = true, .shadow = true}));
    letters<QCheckBox>(7206)->click();
    EXPECT_EQ(core().look().font_style(DXUT_CONTROL_STATIC), (FontStyle{.shadow = true}));
    auto* hover = letters<QComboBox>(7221);
    hover->setCurrentIndex(hover->findData(u"accent"_s));
    Q_EMIT hover->activated(hover->currentIndex());
    EXPECT_EQ(core().look().text_color(DXUT_CONTROL_STATIC, VisualState::Hover), 0xff6fd3e0u);
    EXPECT_EQ(letters<CColorSwatch>(7211)->argb(), 0xff6fd3e0u);
    m_answers.dialogs.push_back([](QDialog& dialog) { dialog.accept(); });
    letters<CColorSwatch>(7213)->click();
    EXPECT_EQ(core().scene_style()->style_state().colors.value(u"Static.Text.disabled"_s), u"#ff7f8c93"_s);
    EXPECT_EQ(m_scene->journal().step_count(), 6u);
    while (m_scene->journal().undo()) {}
    m_world.broadcast(ui_scene_changed);
    EXPECT_EQ(core().scene_style(), nullptr);
    EXPECT_FALSE(letters<QCheckBox>(7208)->isChecked());
}

TEST_F(FontPage, a_missing_font_is_told_with_its_substitute)
{
    m_scene->set_look_font(DXUT_CONTROL_STATIC, u"No Such Font"_s);
    m_world.broadcast(ui_scene_changed);
    EXPECT_EQ(box(7202)->currentText(), u"No Such Font (missing)"_s);
    auto* missing = qobject_cast<QLabel*>(m_page->control(7209));
    EXPECT_FALSE(missing->isHidden());
    EXPECT_TRUE(missing->text().contains(drawn_font_family(u"No Such Font"_s)));
    pick(7202, 0);
    EXPECT_TRUE(missing->isHidden());
}

TEST_F(FontPage, is_reached_from_the_style_tab_and_from_the_element_editor_and_follows_the_selection)
{
    CChildDlg* elements = page(u"CDlgElementEditor"_s);
    auto* owners = qobject_cast<QComboBox*>(elements->control(6960));
    owners->setCurrentIndex(owners->findData(DXUT_CONTROL_LISTBOX));
    Q_EMIT owners->activated(owners->currentIndex());
    qobject_cast<QAbstractButton*>(elements->control(6965))->click();
    EXPECT_EQ(box(7200)->currentData().toInt(), DXUT_CONTROL_LISTBOX);
    owners->setCurrentIndex(owners->findData(DXUT_CONTROL_SLIDER));
    Q_EMIT owners->activated(owners->currentIndex());
    EXPECT_FALSE(elements->control(6965)->isEnabled()) << "a slider has no text";
    CDXUTControl* button = core().create_control(DXUT_CONTROL_BUTTON, core().GetRootDialog(), {0, 0, 50, 50});
    core().SelectControl(button, false);
    m_world.broadcast(ui_selection_changed);
    EXPECT_EQ(box(7200)->currentData().toInt(), DXUT_CONTROL_BUTTON);
    pick(7200, box(7200)->findData(look_owner_menu));
    m_world.broadcast(ui_selection_changed);
    EXPECT_EQ(box(7200)->currentData().toInt(), look_owner_menu) << "the same selection";
}

} // namespace tarn::test
