#include "support/editor_fixture.h"

#include "core/journal.h"
#include "frame/dlg_group.h"
#include "frame/rollup.h"
#include "page_base/bound_page.h"
#include "shell/prop_bar.h"

#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTranslator>

#include <map>

namespace tarn::test {

namespace {

class PropertySearch : public Editor {
protected:
    void SetUp() override
    {
        start();
        m_frame.resize(700, 900);
        m_frame.show();
        bar().show_bar(true);
        for (int i = 0; i < 2; ++i)
            m_controls.push_back(core().create_control(i == 0 ? DXUT_CONTROL_BUTTON : DXUT_CONTROL_SLIDER,
                                                       core().GetRootDialog(), QRectF(0, 0, 50, 20)));
        select(0);
    }
    CPropBar& bar() { return *dynamic_cast<CPropBar*>(m_ui.control_bars().front()); }
    void select(int index)
    {
        core().SelectControl(m_controls[std::size_t(index)], false);
        m_world.broadcast(ui_selection_changed);
    }
    QLineEdit& line() { return *bar().findChild<QLineEdit*>(u"property_search"_s); }
    void type(const QString& text) { line().setText(text); }
    bool shows(const QString& page_name, int id) { return page(page_name)->control(id)->isVisibleTo(&m_frame); }
    bool finds_nothing() { return bar().findChild<QLabel*>(u"nothing_found"_s)->isVisibleTo(&m_frame); }
    /// What is hidden in its own right, and which sections are unfolded.
    std::map<const QWidget*, bool> looks()
    {
        std::map<const QWidget*, bool> all;
        for (const QWidget* widget : bar().group().findChildren<QWidget*>())
            all[widget] = widget->isHidden();
        return all;
    }

    std::vector<CDXUTControl*> m_controls;
};

TEST_F(PropertySearch, finds_captions_in_both_languages_and_names_and_unfolds_what_holds_them)
{
    ASSERT_FALSE(shows(u"CChildCtrlDimension"_s, 6410)) << "the section is folded at first";
    for (const QString& text : {u"角度"_s, u"DEGREES"_s, u"rotation"_s}) {
        type(text);
        EXPECT_TRUE(shows(u"CChildCtrlDimension"_s, 6410)) << text.toStdString();
        EXPECT_FALSE(shows(u"CChildCtrlDimension"_s, 6337)) << text.toStdString();
        EXPECT_FALSE(shows(u"CDlgPropButton"_s, 6352)) << text.toStdString();
        EXPECT_FALSE(shows(u"CDlgPropControl"_s, 6396)) << text.toStdString();
    }
    type(u"锁定"_s);
    EXPECT_TRUE(shows(u"CDlgPropControl"_s, 6355));
    EXPECT_FALSE(shows(u"CDlgPropControl"_s, 6335)) << "boxes beside each other are found one by one";
    type(u"align_type"_s);
    EXPECT_TRUE(shows(u"CChildCtrlDimension"_s, 6469));
    EXPECT_TRUE(shows(u"CChildCtrlDimension"_s, 6502)) << "the buttons of one choice stay together";
    type(u"位置与大小"_s);
    EXPECT_TRUE(shows(u"CChildCtrlDimension"_s, 6341)) << "the title of a group is for all in it";
    EXPECT_FALSE(finds_nothing());
    type(u"no such thing"_s);
    EXPECT_TRUE(finds_nothing());
}

TEST_F(PropertySearch, every_attribute_is_found_by_its_name_and_none_is_changed)
{
    QWidget& front = *bar().group().currentWidget();
    const QString step = m_scene->journal().undo_name();
    front.findChild<CMyRollup*>()->ExpandAllPages(true);
    std::vector<std::pair<QWidget*, QString>> attributes;
    for (const auto* page : front.findChildren<CBoundPage*>())
        for (const FieldRow* row : page->field_rows())
            if (QWidget* control = page->control(row->control); control->isVisibleTo(&front))
                attributes.emplace_back(control, page->attribute_of(row->control));
    EXPECT_GT(attributes.size(), 25u);
    for (const auto& [control, name] : attributes) {
        EXPECT_FALSE(name.isEmpty()) << control->objectName().toStdString();
        type(name);
        EXPECT_TRUE(control->isVisibleTo(&front)) << name.toStdString();
    }
    EXPECT_EQ(m_scene->journal().undo_name(), step);
}

TEST_F(PropertySearch, escape_shows_everything_again_and_folds_it_as_it_was)
{
    line().setFocus();
    const auto before = looks();
    for (const QString& text : {u"name"_s, u"角度"_s, u"no such thing"_s, u"X"_s})
        type(text);
    ASSERT_NE(looks(), before);
    QTest::keyClick(&line(), Qt::Key_Escape);
    EXPECT_TRUE(line().text().isEmpty());
    EXPECT_EQ(looks(), before);
    EXPECT_FALSE(finds_nothing());
}

TEST_F(PropertySearch, stays_for_what_is_selected_next)
{
    type(u"MIN："_s);
    EXPECT_TRUE(finds_nothing()) << "a button has none";
    select(1);
    EXPECT_TRUE(shows(u"CDlgPropSlider"_s, 6380));
    EXPECT_FALSE(finds_nothing());
    auto* rollup = bar().group().currentWidget()->findChild<CMyRollup*>();
    rollup->ExpandPage(2, false);
    m_world.broadcast(ui_selection_changed);
    EXPECT_FALSE(rollup->is_expanded(2)) << "what the author folded meanwhile stays folded";
    core().SelectDialog(core().GetRootDialog(), false);
    m_world.broadcast(ui_selection_changed);
    EXPECT_TRUE(finds_nothing());
    type(u"title"_s);
    EXPECT_TRUE(shows(u"CDlgPropDialog"_s, 6362));
}

} // namespace

} // namespace tarn::test
