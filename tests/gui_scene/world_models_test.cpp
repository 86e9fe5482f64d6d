#include "support/scene_fixture.h"

#include "engine/scene_selection.h"
#include "engine/world_edit.h"
#include "engine/world_models.h"
#include "engine/world_renderer.h"
#include "gui_scene/world_removal.h"
#include "world/world_scene.h"

#include <QImage>

using namespace tarn;
using namespace tarn::test;

namespace {

/// A scene whose world gets models from files.
class WorldModelsTest : public SceneTest {
protected:
    static QString sample(const QString& name) { return QStringLiteral(TARN_MODELS "/") + name + u".glb"_s; }
    WorldObject* add(const QString& name, const QVector3D& place = {})
    {
        auto object = add_world_model(m_world, sample(name), place, {});
        EXPECT_TRUE(object) << object.status().message().toStdString();
        return object.value();
    }
    QStringList model_files() const
    {
        QStringList names;
        for (const QString& name : m_scene.document().files().keys())
            if (name.startsWith(u"models/"))
                names << name;
        return names;
    }
    QStringList problems()
    {
        QStringList texts;
        for (const auto& problem : m_scene.model().problems())
            texts << problem.text;
        return texts;
    }
    QImage picture()
    {
        const QSize size(320, 240);
        const RenderView view{m_world.camera().view_matrix(), m_world.camera().projection_matrix(size), size};
        return m_world.renderer().picture(0, view, WorldRenderer::Eye::Camera);
    }
};

} // namespace

TEST_F(WorldModelsTest, AFileBecomesAnObjectOfItsKindAndPartOfThePackage)
{
    EXPECT_EQ(add(u"crate"_s)->type(), WorldType::Model);
    EXPECT_EQ(add(u"chest"_s)->type(), WorldType::AnimatedModel);
    WorldObject* figure = add(u"figure"_s, {1, 0, 2});
    EXPECT_EQ(figure->type(), WorldType::Skeleton);
    EXPECT_EQ(figure->name(), u"figure"_s);
    EXPECT_EQ(m_world.selection().get_last(), figure);
    EXPECT_EQ(add(u"crate"_s)->file(), u"models/crate/crate.glb"_s) << "the same content is kept once";
    EXPECT_EQ(model_files(),
              (QStringList{u"models/chest/chest.glb"_s, u"models/crate/crate.glb"_s, u"models/figure/figure.glb"_s}));
    ASSERT_TRUE(m_scene.journal().undo());
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(model_files().size(), 2);
    ASSERT_TRUE(m_scene.journal().redo());

    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    const QByteArray before = text();
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_TRUE(same_text(text(), before));
    wait_for_models(m_world);
    for (const WorldObject* object : m_world.objects().objects())
        EXPECT_NE(m_world.models().pose(*object), nullptr) << object->name().toStdString();
    EXPECT_TRUE(problems().isEmpty()) << problems().join(u'|').toStdString();
}

TEST_F(WorldModelsTest, TheLastObjectTakesItsFilesAlongUndoBringsThemBackAndOtherInterfacesLackThem)
{
    WorldObject* first = add(u"crate"_s);
    add(u"crate"_s);
    remove_world_objects(m_world);
    EXPECT_EQ(model_files().size(), 1);
    select_world_objects(m_world, {first});
    remove_world_objects(m_world);
    EXPECT_TRUE(model_files().isEmpty());
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(model_files().size(), 1);
    ASSERT_TRUE(m_scene.export_to(path(u"interface.tarn"_s), {.interface_only = true}));
    CPakFile package;
    ASSERT_TRUE(package.open(path(u"interface.tarn"_s)));
    EXPECT_FALSE(package.has_file(u"models/crate/crate.glb"_s));
    ASSERT_TRUE(m_scene.load(package, CTexPathInfo(path(u"interface.tarn"_s), 1)));
    EXPECT_EQ(m_world.objects().objects().size(), 1u);
    EXPECT_EQ(model_files().size(), 1) << "the present world keeps its models";
}

TEST_F(WorldModelsTest, WhatCannotBeReadIsTakenForAProblemAndKept)
{
    put(path(u"bad.glb"_s), "glTF nothing");
    const auto refused = add_world_model(m_world, path(u"bad.glb"_s), {}, {});
    ASSERT_FALSE(refused);
    EXPECT_TRUE(refused.status().message().contains(u"bad.glb"_s));
    EXPECT_TRUE(m_world.objects().objects().empty());
    EXPECT_FALSE(add_world_model(m_world, path(u"none.glb"_s), {}, {}));

    WorldObject* chest = add(u"chest"_s);
    chest->set_action(u"dance"_s);
    EXPECT_EQ(problems().size(), 1);
    m_scene.document().edit_files([](auto& files) { files[u"models/chest/chest.glb"_s] = "glTF cut off"; });
    wait_for_models(m_world);
    EXPECT_EQ(m_world.models().pose(*chest), nullptr);
    EXPECT_EQ(problems().size(), 1);
    EXPECT_FALSE(model_box(m_world, *chest).is_empty()) << "a block stands for it";
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_EQ(m_scene.document().files().value(u"models/chest/chest.glb"_s), "glTF cut off");
}

TEST_F(WorldModelsTest, APlayingFigureIsPosedByTheClockAndDrawnOnlyWhenItMoved)
{
    WorldObject* figure = add(u"figure"_s);
    m_world.selection().clear();
    EXPECT_TRUE(m_world.models().moves(*figure));
    const quint64 at_begin = m_world.models().pose(*figure)->revision();
    EXPECT_EQ(m_world.models().pose(*figure)->revision(), at_begin);
    const QImage before = picture();
    m_world.models().set_clock(0.3);
    EXPECT_NE(m_world.models().pose(*figure)->revision(), at_begin);
    if (before.isNull())
        GTEST_SKIP() << "no OpenGL";
    const QImage after = picture();
    EXPECT_NE(before, after);
    EXPECT_EQ(m_world.renderer().cost().items, 1);
    EXPECT_EQ(picture(), after);
    EXPECT_FALSE(m_world.renderer().cost().drawn) << "nothing changed";
    figure->write<WorldObjectState>([](WorldObjectState& state) { state.visible = false; });
    EXPECT_TRUE(picture().isNull() || m_world.renderer().cost().items == 0);
}

TEST_F(WorldModelsTest, TheLastPanelTakesItsPictureAlongAndUndoBringsItBack)
{
    WorldObject* panel = m_world.objects().create(WorldType::Panel);
    WorldObject* other = m_world.objects().create(WorldType::Panel);
    QImage(8, 8, QImage::Format_RGB32).save(path(u"board.png"_s));
    ASSERT_TRUE(m_scene.set_picture({panel, other}, key<&PanelState::picture>, path(u"board.png"_s)));
    const QString entry = u"textures/board.png"_s;
    select_world_objects(m_world, {panel});
    remove_world_selection(m_scene);
    EXPECT_TRUE(m_scene.document().files().contains(entry));
    select_world_objects(m_world, {other});
    remove_world_selection(m_scene);
    EXPECT_FALSE(m_scene.document().files().contains(entry));
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_TRUE(m_scene.document().files().contains(entry));
    EXPECT_TRUE(other->is_attached());
}
