#include "support/attributes.h"
#include "support/editor_fixture.h"

#include "frame/control_bar.h"
#include "gui_core/anchor.h"
#include "manager/report_list_control.h"
#include "widgets/super_edit.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QTest>

namespace tarn::test {

namespace {

/// What pages and lists show follows the model, whoever changes it, without a code that would tell them.
class Refresh : public Editor {
protected:
    void SetUp() override
    {
        start();
        m_dialog = core().create_dialog(QRect(100, 100, 400, 300), u"Home"_s);
        m_frame.show();
        for (CMyControlBar* bar : m_ui.control_bars())
            bar->show_bar(true);
    }
    CDXUTControl* button(const QRectF& rect) { return core().create_control(DXUT_CONTROL_BUTTON, m_dialog, rect); }
    void select(const std::vector<CDXUTControl*>& controls)
    {
        core().ClearCtrlSelection();
        for (CDXUTControl* control : controls)
            core().SelectControl(control, true);
        m_world.broadcast(ui_selection_changed);
    }
    /// A turn of the event loop.
    static void turn() { QCoreApplication::processEvents(); }
    CSuperEdit& location(int id) { return *dynamic_cast<CSuperEdit*>(page(u"CChildCtrlDimension"_s)->control(id)); }
    CReportListControl& list()
    {
        return *dynamic_cast<CReportListControl*>(page(u"CDlgGuiManagerCtrl"_s)->control(6316));
    }

    CDXUTDialog* m_dialog = nullptr;
};

TEST_F(Refresh, numbers_follow_the_size_of_the_screen_and_the_next_edit_writes_no_stale_one)
{
    constexpr int id_x = 6337, id_y = 6339;
    CDXUTControl* control = core().create_control(DXUT_CONTROL_BUTTON, core().GetRootDialog(), QRectF(40, 20, 99, 30));
    ASSERT_TRUE(control->set_align_type(anchor_right));
    select({control});
    page(u"CChildCtrlDimension"_s)->show();
    turn();
    EXPECT_EQ(location(id_x).value(), 40);
    core().set_screen_size(core().screen_size() + QSize(100, 0));
    turn();
    EXPECT_EQ(location(id_x).value(), 140);

    auto* line = location(id_y).findChild<QLineEdit*>();
    line = line ? line : qobject_cast<QLineEdit*>(static_cast<QWidget*>(&location(id_y)));
    ASSERT_NE(line, nullptr);
    line->selectAll();
    QTest::keyClicks(line, u"90"_s);
    EXPECT_EQ(control->y(), 90);
    EXPECT_EQ(control->x(), 140) << "that was not typed";
}

TEST_F(Refresh, the_dialog_filter_follows_layers_and_names)
{
    CDXUTDialog* second = core().create_dialog(QRect(0, 0, 50, 50), u"Second"_s);
    turn();
    const auto entries = [&] {
        const auto* combo = dynamic_cast<QComboBox*>(page(u"CDlgGuiManagerCtrl"_s)->control(6548));
        QStringList texts;
        for (int i = 0; i < combo->count(); ++i)
            texts.append(combo->itemText(i));
        return texts.mid(texts.size() - 2);
    };
    const QStringList before = entries();
    ASSERT_TRUE(core().AdjustDialogLayer(second, 1));
    turn();
    EXPECT_EQ(entries(), QStringList(before.crbegin(), before.crend()));
    ASSERT_TRUE(set(*second, "name", u"Renamed"_s));
    turn();
    EXPECT_TRUE(entries().contains(u"Renamed"_s)) << entries().join(u", "_s).toStdString();
}

TEST_F(Refresh, undo_brings_back_all_rows)
{
    const std::vector<CDXUTControl*> controls{button(QRectF(0, 0, 9, 9)), button(QRectF(9, 0, 9, 9)),
                                              button(QRectF(18, 0, 9, 9))};
    select(controls);
    {
        const UserAction action(m_scene->journal(), u"remove"_s);
        core().remove_controls(controls);
    }
    turn();
    EXPECT_EQ(list().row_count(), 0);
    ASSERT_TRUE(m_scene->journal().undo());
    turn();
    EXPECT_EQ(list().row_count(), 3);
    EXPECT_EQ(list().selectionModel()->selectedRows().size(), 3);
}

TEST_F(Refresh, the_whole_screen_is_drawn_when_a_preview_begins_and_ends)
{
    for (const bool editing : {false, true}) {
        core().take_damage();
        core().EnableGui(editing);
        EXPECT_TRUE(core().take_damage().contains(QRectF({}, QSizeF(core().screen_size())))) << editing;
    }
}

} // namespace

} // namespace tarn::test
