#include "engine/camera_view.h"
#include "widgets/iconfun.h"
#include "world_fixture.h"
#include "world_pages/world_kinds.h"

namespace tarn::test {

namespace {

using WorldList = WorldPages;

constexpr int add_button = 7102;

} // namespace

TEST_F(WorldList, the_selection_goes_from_the_list_to_the_view_and_back)
{
    EXPECT_EQ(names(), (QStringList{u"Left"_s, u"Right"_s, u"Eye"_s, u"Way"_s}));
    click_cell(2, 0);
    click_cell(0, 0, Qt::ControlModifier);
    EXPECT_EQ(chosen(), (std::vector{m_camera, m_left})) << "the one that was clicked last is the current one";
    EXPECT_EQ(m_codes, (std::vector<int>{ui_world_selection_changed, ui_world_selection_changed}));
    select_world_objects(m_world, {m_right});
    EXPECT_EQ(m_list->selected_objects(), std::vector{m_right});
    QTest::keyClick(m_list, Qt::Key_Down);
    EXPECT_EQ(chosen(), std::vector{m_camera});
    EXPECT_EQ(steps(), 0u) << "selecting is no step";
}

TEST_F(WorldList, a_search_shows_what_is_named_so_and_keeps_what_is_selected)
{
    select_world_objects(m_world, {m_left, m_path});
    auto* search = static_cast<QLineEdit*>(m_page->control(7101));
    QTest::keyClicks(search, u"EF"_s);
    EXPECT_EQ(names(), QStringList{u"Left"_s});
    EXPECT_EQ(chosen(), (std::vector{m_left, m_path}));
    m_left->set_name(u"Other"_s);
    tell();
    EXPECT_TRUE(names().isEmpty());
    search->clear();
    EXPECT_EQ(names().size(), 4);
    EXPECT_EQ(m_list->selected_objects(), (std::vector{m_left, m_path}));
}

TEST_F(WorldList, adds_duplicates_and_removes_in_one_step_each)
{
    m_answers.commands.push_back(200 + int(WorldType::Camera));
    click(add_button);
    ASSERT_EQ(world().objects().size(), 5u);
    EXPECT_EQ(chosen(), std::vector{world().objects().back()});
    EXPECT_FALSE(m_answers.texts.join(u'|').contains(u"Skeleton"_s)) << "these come from files";
    click(7103);
    EXPECT_EQ(world().objects().size(), 6u);
    EXPECT_EQ(m_list->selected_objects(), std::vector{world().objects().back()});
    QTest::keyClick(m_list, Qt::Key_Delete);
    EXPECT_EQ(names().size(), 5);
    EXPECT_FALSE(m_page->control(7104)->isEnabled()) << "nothing is selected";
    EXPECT_EQ(steps(), 3u);
    m_scene->journal().undo();
    m_world.broadcast(ui_scene_changed);
    EXPECT_EQ(names().size(), 6);
}

TEST_F(WorldList, a_click_beside_a_name_hides_or_locks_and_selects_nothing)
{
    select_world_objects(m_world, {m_left, m_right});
    click_cell(2, CReportListWorld::Shown);
    EXPECT_FALSE(m_camera->is_visible());
    EXPECT_TRUE(m_left->is_visible());
    click_cell(0, CReportListWorld::Locked);
    EXPECT_TRUE(m_left->is_locked() && m_right->is_locked()) << "all that are selected follow";
    EXPECT_EQ(chosen(), (std::vector{m_left, m_right}));
    EXPECT_EQ(steps(), 2u);
}

TEST_F(WorldList, f2_renames_and_an_empty_answer_of_the_menu_does_nothing)
{
    select_world_objects(m_world, {m_camera});
    QTest::keyClick(m_list, Qt::Key_F2);
    auto* edit = m_list->findChild<QLineEdit*>();
    ASSERT_NE(edit, nullptr);
    edit->selectAll();
    QTest::keyClicks(edit, u"Over there"_s);
    QTest::keyClick(edit, Qt::Key_Return);
    QCoreApplication::processEvents(); // The editor is closed after the key.
    EXPECT_EQ(m_camera->name(), u"Over there"_s);
    EXPECT_EQ(m_list->item_caption(2, 0), u"Over there"_s);
    m_answers.commands.push_back(0);
    Q_EMIT m_list->menu_requested(2, QPoint());
    EXPECT_EQ(steps(), 1u);
}

TEST_F(WorldList, the_menu_hides_shows_all_and_looks_through_a_camera)
{
    const auto choose = [&](int command) {
        m_answers.commands.push_back(command);
        Q_EMIT m_list->menu_requested(0, QPoint());
    };
    select_world_objects(m_world, {m_left, m_camera});
    choose(5);
    EXPECT_FALSE(m_left->is_visible() || m_camera->is_visible());
    choose(7);
    EXPECT_TRUE(m_left->is_visible() && m_camera->is_visible());
    choose(2);
    EXPECT_EQ(m_world.camera_view().camera(), m_camera);
    choose(2);
    EXPECT_EQ(m_world.camera_view().camera(), nullptr);
}

TEST_F(WorldList, nothing_can_be_edited_while_the_scene_runs)
{
    select_world_objects(m_world, {m_left});
    m_scene->play(true);
    m_world.broadcast(ui_full_refresh);
    EXPECT_FALSE(m_list->isEnabled() && m_page->isEnabled());
    Q_EMIT m_list->delete_pressed();
    EXPECT_EQ(world().objects().size(), 4u);
    m_scene->play(false);
}

TEST(WorldKinds, every_type_of_objects_has_a_row_in_its_place_with_an_icon)
{
    ASSERT_EQ(world_kinds().size(), std::size_t(world_type_count));
    for (int type = 0; type < world_type_count; ++type)
        EXPECT_EQ(world_kinds()[std::size_t(type)].type, WorldType(type));
    for (const WorldKind& kind : world_kinds())
        EXPECT_TRUE(iconfun::has_icon(kind.icon)) << kind.icon;
}

} // namespace tarn::test
