// Timebars and the objects of the 3D world.

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "engine/camera_view.h"
#include "engine/scene_selection.h"
#include "engine/world_edit.h"
#include "engine/world_models.h"
#include "support/attributes.h"
#include "support/scene_fixture.h"
#include "world/world_scene.h"

#include <QQuaternion>

namespace tarn::test {

namespace {

class WorldAnimation : public SceneTest {
protected:
    void SetUp() override
    {
        m_camera = world().create(WorldType::Camera);
        m_panel = world().create(WorldType::Panel);
        m_path = world().create(WorldType::Path);
        m_path->set_place({0, 1, 0});
        m_path->set_points({{0, 0, 0}, {4, 0, 0}});
        m_bar = animation().create_bar(4);
        animation().set_editing(true);
    }
    CAnimationScene& animation() { return m_scene.animation(); }
    WorldScene& world() { return m_world.objects(); }
    CTimerObject& timer(const WorldObject& object) { return *m_bar->SearchItemUsage(object); }
    void tell() { m_scene.document().changes().tell(); }
    /// From the path's begin to its end in four seconds.
    CTimerObject& follow(WorldObject& object)
    {
        m_bar->record_selection({&object});
        CTimerObject& timer = this->timer(object);
        timer.set_path({m_path->id()});
        CObjKey(timer, 0).set_value(Channel::PathShare, KeyValue::number(0));
        CObjKey(timer, 4).set_value(Channel::PathShare, KeyValue::number(1));
        return timer;
    }
    void expect_at(const WorldObject& object, const QVector3D& place)
    {
        EXPECT_LT((object.place() - place).length(), 1e-3f)
            << object.place().x() << " " << object.place().y() << " " << object.place().z();
    }

    WorldObject* m_camera = nullptr;
    WorldObject* m_panel = nullptr;
    WorldObject* m_path = nullptr;
    CTimebar* m_bar = nullptr;
};

} // namespace

TEST_F(WorldAnimation, what_is_selected_of_the_world_is_recorded_and_moves_between_its_keys)
{
    (void)dialog({0, 0, 100, 100});
    m_world.selection().add(m_camera);
    m_world.selection().add(m_panel);
    EXPECT_EQ(m_scene.selected_objects(), (std::vector<ModelObject*>{m_camera, m_panel}));
    EXPECT_EQ(m_bar->record_selection(m_scene.selected_objects()), 7 + 6) << "a camera has a field of view";
    m_bar->set_current_time(4);
    m_camera->set_place({4, 0, 0});
    ASSERT_TRUE(set(*m_camera, "field_of_view", 85.0));
    ASSERT_TRUE(set(*m_panel, "transparency", 1.0));
    ASSERT_TRUE(set(*m_panel, "color", qint64(0xff000000)));
    EXPECT_EQ(m_bar->record_selection(m_scene.selected_objects()), 2 + 2);
    m_bar->set_current_time(2);
    expect_at(*m_camera, {2, 0, 0});
    EXPECT_FLOAT_EQ(static_cast<const CameraState&>(m_camera->object_state()).field_of_view, 65);
    EXPECT_FLOAT_EQ(m_panel->object_state().transparency, 0.5f);
    EXPECT_EQ(m_panel->object_state().color, 0xff808080);
    animation().set_editing(false);
    expect_at(*m_camera, {0, 0, 0});
}

TEST_F(WorldAnimation, a_follower_goes_along_the_path_as_it_is_now)
{
    follow(*m_panel);
    m_bar->set_current_time(1);
    expect_at(*m_panel, {1, 1, 0});
    EXPECT_TRUE(animation().driving(*m_panel, key<&WorldObjectState::x>));
    m_path->set_place({0, 1, 5});
    tell();
    expect_at(*m_panel, {1, 1, 5});
    world().remove({m_path});
    tell();
    expect_at(*m_panel, {0, 0, 0});
    m_scene.journal().undo();
    tell();
    expect_at(*m_panel, {1, 1, 5});
}

TEST_F(WorldAnimation, along_the_path_a_panel_looks_ahead_and_a_camera_sees_what_comes)
{
    for (WorldObject* object : {m_panel, m_camera}) {
        CTimerObject& timer = follow(*object);
        timer.set_follows_direction(true);
        m_bar->set_current_time(2);
        const QVector3D front(0, 0, object == m_camera ? -1 : 1);
        const QVector3D ahead = QQuaternion::fromEulerAngles(object->turn()).rotatedVector(front);
        EXPECT_LT((ahead - QVector3D(1, 0, 0)).length(), 1e-3f);
        // A quarter turn about the path leaves the direction and lays the upper side down.
        CObjKey(timer, 0).set_value(Channel::PathTurn, KeyValue::number(float(M_PI_2)));
        timer.update_frame();
        const QQuaternion turned = QQuaternion::fromEulerAngles(object->turn());
        EXPECT_LT((turned.rotatedVector(front) - ahead).length(), 2e-3f);
        EXPECT_LT(std::abs(turned.rotatedVector({0, 1, 0}).y()), 2e-3f);
    }
}

TEST_F(WorldAnimation, recording_a_follower_keeps_the_share_that_is_nearest_to_where_it_was_moved)
{
    follow(*m_panel);
    m_bar->set_current_time(2);
    m_panel->set_place({3, 2, 1});
    expect_at(*m_panel, {3, 2, 1});
    m_bar->record_selection({m_panel});
    expect_at(*m_panel, {3, 1, 0});
    EXPECT_NEAR(CObjKey(timer(*m_panel), 2).value(Channel::PathShare).part(0), 0.75, 1e-4);
    EXPECT_TRUE(animation().unrecorded().isEmpty());
}

TEST_F(WorldAnimation, the_view_rides_with_a_camera_that_it_looks_through)
{
    follow(*m_camera);
    m_world.camera_view().look_through(m_camera);
    m_bar->set_current_time(3);
    tell();
    EXPECT_LT((m_world.camera().eye() - QVector3D(3, 1, 0)).length(), 1e-3f);
}

TEST_F(WorldAnimation, the_keys_of_a_figure_change_its_action_which_ends_after_its_loops)
{
    auto added = add_world_model(m_world, QStringLiteral(TARN_MODELS "/figure.glb"), {}, {});
    ASSERT_TRUE(added) << added.status().message().toStdString();
    WorldObject& figure = *added.value();
    wait_for_models(m_world);
    const Model& model = *m_world.models().library().find(figure.file()).model;
    const auto& actions = model.data().actions;
    ASSERT_GT(actions.size(), 1u);
    m_bar->set_total_length(60);
    m_bar->record_selection({&figure});
    CTimerObject& timer = this->timer(figure);
    EXPECT_EQ(CObjKey(timer, 0).value(Channel::Action).as_int(), model.find_action(actions.front().name));
    CObjKey(timer, 10).set_value(Channel::Action, KeyValue::whole(1));
    CObjKey(timer, 10).set_value(Channel::Loops, KeyValue::whole(2));
    const auto state = [&]() -> const MovingModelState& {
        return static_cast<const MovingModelState&>(figure.object_state());
    };
    m_bar->set_current_time(3);
    EXPECT_EQ(state().action, actions[0].name);
    EXPECT_FLOAT_EQ(state().action_time, 3);
    EXPECT_TRUE(state().repeats);
    EXPECT_FALSE(state().plays) << "the timebar does";
    m_bar->set_current_time(10.25f);
    EXPECT_EQ(state().action, actions[1].name);
    EXPECT_FLOAT_EQ(state().action_time, 0.25f);
    m_bar->set_current_time(60);
    ASSERT_LT(2 * actions[1].duration, 50);
    EXPECT_FLOAT_EQ(state().action_time, actions[1].duration);
    EXPECT_FALSE(state().repeats) << "it holds its last pose";
    animation().set_editing(false);
    EXPECT_TRUE(state().plays);
}

TEST_F(WorldAnimation, path_and_direction_are_saved_and_copied_with_the_timebar)
{
    CTimerObject& timer = follow(*m_panel);
    timer.set_follows_direction(true);
    ASSERT_TRUE(m_scene.save_scene(path()));
    const quint32 way = m_path->id();
    ASSERT_TRUE(m_scene.open_scene(path()));
    CTimebar* bar = animation().bars().front();
    CTimebar* copy = animation().clone_bar(bar);
    for (const CTimebar* one : {bar, copy}) {
        const CTimerObject& object = *one->objects().front();
        EXPECT_EQ(object.path().id, way);
        EXPECT_TRUE(object.follows_direction());
        ASSERT_NE(object.channel_variable(Channel::PathShare), nullptr);
    }
}

} // namespace tarn::test
