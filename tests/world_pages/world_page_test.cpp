// What the rows of the pages do is walked with those of all pages; here stands what is their own.

#include "animation/animation_scene.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "engine/camera_view.h"
#include "widgets/super_edit.h"
#include "world_fixture.h"

#include <QComboBox>

namespace tarn::test {

namespace {

using WorldPage = WorldPages;

} // namespace

TEST_F(WorldPage, shows_the_fields_of_the_kind_that_was_selected_last)
{
    struct Case {
        WorldObject* object;
        const char* page;
    };
    for (const Case& row : {Case{m_left, "CDlgPropWorldPanel"}, Case{m_camera, "CDlgPropWorldCamera"},
                            Case{m_path, "CDlgPropWorldPath"}}) {
        select_world_objects(m_world, {m_right, row.object});
        for (const char* name : {"CDlgPropWorldPanel", "CDlgPropWorldCamera", "CDlgPropWorldPath"})
            EXPECT_EQ(page(QLatin1String(name))->isVisible(), qstrcmp(name, row.page) == 0) << name << row.page;
    }
    select_world_objects(m_world, {});
    EXPECT_FALSE(page(u"CDlgPropWorldPath"_s)->isVisible());
    EXPECT_FALSE(page(u"CDlgPropWorld"_s)->control(7112)->isEnabled());
}

TEST_F(WorldPage, a_sum_moves_each_object_by_its_own_place)
{
    m_left->set_place({1, 0, 0});
    m_camera->set_place({5, 0, 0});
    select_world_objects(m_world, {m_left, m_camera});
    auto* x = static_cast<CSuperEdit*>(page(u"CDlgPropWorld"_s)->control(7112));
    EXPECT_FALSE(x->value()) << "they disagree";
    x->setFocus();
    QTest::keyClicks(x, u"+10"_s);
    QTest::keyClick(x, Qt::Key_Return);
    EXPECT_EQ(m_left->place().x(), 11);
    EXPECT_EQ(m_camera->place().x(), 15);
}

TEST_F(WorldPage, a_camera_takes_the_place_of_the_view_and_the_view_looks_through_it)
{
    select_world_objects(m_world, {m_camera});
    CChildDlg* camera = page(u"CDlgPropWorldCamera"_s);
    static_cast<QAbstractButton*>(camera->control(7133))->click();
    EXPECT_LT((m_camera->place() - m_world.camera().eye()).length(), 1e-4f);
    EXPECT_EQ(steps(), 1u);
    const QMatrix4x4 before = m_world.camera().view_matrix();
    auto* look = static_cast<QAbstractButton*>(camera->control(7132));
    look->click();
    EXPECT_EQ(m_world.camera_view().camera(), m_camera);
    for (int row = 0; row < 4; ++row)
        EXPECT_LT((m_world.camera().view_matrix().row(row) - before.row(row)).length(), 1e-3f);
    look->click();
    EXPECT_EQ(m_world.camera_view().camera(), nullptr);
    EXPECT_EQ(steps(), 1u) << "looking is no step";
}

TEST_F(WorldPage, a_path_can_be_chosen_for_what_the_current_timebar_animates)
{
    CChildDlg* properties = page(u"CDlgPropWorld"_s);
    auto* paths = static_cast<QComboBox*>(properties->control(7125));
    select_world_objects(m_world, {m_left});
    EXPECT_FALSE(paths->isEnabled()) << "no timebar has it";
    CTimebar* bar = m_scene->animation().create_bar(4);
    m_scene->animation().set_editing(true);
    m_left->set_place({-1.9f, 3, 0});
    bar->record_selection({m_left});
    bar->set_current_time(4);
    m_left->set_place({1, 3, 0});
    bar->record_selection({m_left});
    m_world.broadcast(ui_timebar_content);
    ASSERT_TRUE(paths->isEnabled());
    QTest::keyClick(paths, Qt::Key_Down);
    EXPECT_EQ(bar->SearchItemUsage(*m_left)->path().id, m_path->id());
    tell();
    EXPECT_NEAR(m_left->place().x(), 1, 1e-4);
    EXPECT_NEAR(m_left->place().y(), 0, 1e-4) << "it came down onto the path";
    m_scene->journal().undo();
    tell();
    EXPECT_NEAR(m_left->place().y(), 3, 1e-4);
}

} // namespace tarn::test
