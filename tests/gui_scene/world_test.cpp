#include "support/gui_fixture.h"
#include "support/scene_fixture.h"

#include "engine/scene_selection.h"
#include "gui_core/control_state.h"
#include "world/world_scene.h"

using namespace tarn;
using namespace tarn::test;

namespace {

/// A scene whose interface shows objects of its world: a picture in picture a camera, a map an object.
class WorldInPackages : public SceneTest {
protected:
    WorldScene& world() { return m_world.objects(); }

    void fill(const QString& name)
    {
        WorldObject* camera = world().create(WorldType::Camera, name + u" camera"_s);
        camera->set_place({1.5f, 2, -3});
        WorldObject* path = world().create(WorldType::Path, name + u" path"_s);
        path->set_points({{0, 0, 0}, {0.1f, 2, 3}, {4, 5, 6}});
        WorldObject* panel = world().create(WorldType::Panel, name + u" panel"_s);
        CDXUTDialog* home = dialog({10, 10, 300, 200}, name);
        CDXUTControl* small = control(DXUT_CONTROL_PIP, home, {0, 0, 10, 10}, name + u" small"_s);
        CDXUTControl* map = control(DXUT_CONTROL_MAP, home, {20, 0, 10, 10}, name + u" map"_s);
        ASSERT_TRUE(small->set_property(*small->fields().find("camera"), ObjectRef{camera->id()}));
        ASSERT_TRUE(map->set_property(*map->fields().find("camera_model"), ObjectRef{panel->id()}));
        m_scene.document().forget_history();
    }
    QStringList names()
    {
        QStringList names;
        for (const WorldObject* object : world().objects())
            names << object->name();
        return names;
    }
    /// What the attribute of the control called `name` refers to.
    const ModelObject* shown_by(const QString& name, const char* field)
    {
        for (const CDXUTControl* one : core().controls())
            if (one->name() == name)
                return m_scene.document().find(std::get<ObjectRef>(one->property(*one->fields().find(field))).id);
        ADD_FAILURE() << "no control " << name.toStdString();
        return nullptr;
    }
    void expect_own_references(const QString& name, const std::vector<WorldObject*>& objects)
    {
        EXPECT_EQ(shown_by(name + u" small"_s, "camera"), objects[0]);
        EXPECT_EQ(shown_by(name + u" map"_s, "camera_model"), objects[2]);
    }
    Status import(const QString& file)
    {
        CPakFile package;
        const Status opened = package.open(file);
        return opened ? m_scene.load(package, CTexPathInfo(file, 1)) : opened;
    }
};

} // namespace

TEST_F(WorldInPackages, SaveAndOpenKeepItByteForByte)
{
    fill(u"first"_s);
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    const QByteArray before = text();
    EXPECT_TRUE(before.contains("first camera"));
    m_scene.new_scene();
    EXPECT_TRUE(world().objects().empty());
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_TRUE(same_text(text(), before));
    expect_own_references(u"first"_s, world().objects());
    ASSERT_TRUE(m_scene.save_scene(path(u"again.tarn"_s)).ok());
    EXPECT_EQ(content_of(path(u"again.tarn"_s)), content_of(path()));
}

TEST_F(WorldInPackages, AnExportLeavesItOutAndTheSceneKeepsIt)
{
    fill(u"first"_s);
    const QByteArray before = text();
    ASSERT_TRUE(m_scene.export_to(path(), {.interface_only = true}));
    EXPECT_TRUE(same_text(text(), before));
    m_scene.new_scene();
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_TRUE(world().objects().empty());
    EXPECT_EQ(shown_by(u"first small"_s, "camera"), nullptr);
}

TEST_F(WorldInPackages, AnImportChangesTheInterfaceAndLeavesThePresentWorldAlone)
{
    fill(u"other"_s);
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    m_scene.new_scene();
    dialog({0, 0, 50, 50}, u"spare"_s); // Ids differ from those of the package.
    fill(u"mine"_s);
    const QByteArray before = text();
    const std::vector<WorldObject*> mine = world().objects();
    m_world.selection().add(mine.front());
    ASSERT_TRUE(import(path()));
    EXPECT_EQ(names(), (QStringList{u"mine camera"_s, u"mine path"_s, u"mine panel"_s}));
    // Their camera stayed in their world; an id of ours that happens to be the same is not meant.
    EXPECT_EQ(shown_by(u"other small"_s, "camera"), nullptr);
    EXPECT_EQ(shown_by(u"other map"_s, "camera_model"), nullptr);
    QSet<quint32> ids;
    for (const ModelObject* object : m_scene.document().objects()) {
        EXPECT_FALSE(ids.contains(object->id()));
        ids.insert(object->id());
    }
    const QByteArray after = text();
    ASSERT_TRUE(m_scene.save_scene(path(u"both.tarn"_s)).ok());
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_TRUE(same_text(text(), before));
    expect_own_references(u"mine"_s, world().objects());
    ASSERT_TRUE(m_scene.journal().redo());
    EXPECT_TRUE(same_text(text(), after));
    ASSERT_TRUE(m_scene.open_scene(path(u"both.tarn"_s)).ok());
    EXPECT_TRUE(same_text(text(), after));
}

TEST_F(WorldInPackages, AMergeAddsTheInterfaceAndLeavesThePresentWorldAndItsReferencesAlone)
{
    fill(u"other"_s);
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    m_scene.new_scene();
    fill(u"mine"_s); // The same ids as in the package.
    const QByteArray before = text();
    ASSERT_TRUE(m_scene.on_merge_GUI(path(), u"Merged"_s, false));
    EXPECT_EQ(names().size(), 3);
    expect_own_references(u"mine"_s, world().objects());
    EXPECT_EQ(shown_by(u"other small"_s, "camera"), nullptr);
    EXPECT_EQ(shown_by(u"other map"_s, "camera_model"), nullptr);
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_TRUE(same_text(text(), before));
}

TEST_F(WorldInPackages, WhatIsSelectedIsForgottenWithItsSceneAndComesBackWithUndo)
{
    fill(u"first"_s);
    WorldObject* camera = world().objects().front();
    m_world.selection().add(camera);
    m_world.selection().add(world().objects()[1]);
    world().remove({camera});
    EXPECT_EQ(m_world.selection().objects().size(), 1u);
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(m_world.selection().get_last(), world().objects()[1]);
    EXPECT_TRUE(m_world.selection().contains(camera));
    m_scene.new_scene();
    EXPECT_EQ(m_world.selection().get_last(), nullptr);
}
