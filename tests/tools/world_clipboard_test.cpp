#include "mouse_fixture.h"

#include "core/authored.h"
#include "engine/scene_selection.h"
#include "engine/world_edit.h"
#include "support/gui_fixture.h"
#include "support/package_texts.h"
#include "tools/control_clipboard.h"
#include "tools/world_clipboard.h"
#include "world/world_scene.h"

using namespace tarn;
using namespace tarn::test;

namespace {

/// A scene with a panel that shows a picture, and an object from a model of two files.
class WorldClipboardTest : public MouseToolsTest {
protected:
    WorldClipboardTest()
    {
        core().set_texture(u"board.png"_s, png(Qt::red));
        m_panel = world().create(WorldType::Panel, u"Board"_s);
        m_panel->set_place({1, 2, 3});
        m_panel->write<PanelState>([](PanelState& s) {
            s.width = 4;
            s.picture = u"board.png"_s;
        });
        m_tree = world().create(WorldType::Model, u"Tree"_s);
        m_tree->set_file(u"models/tree/tree.obj"_s);
        put_model("bark");
        m_scene.document().forget_history();
    }
    WorldScene& world() { return m_world.objects(); }
    void put_model(const QByteArray& content)
    {
        act([&] {
            m_scene.document().edit_files([&](QMap<QString, QByteArray>& files) {
                files.insert(u"models/tree/tree.obj"_s, content);
                files.insert(u"models/tree/tree.mtl"_s, "shine");
            });
        });
    }
    QByteArray copied()
    {
        select_world_objects(m_world, {m_panel, m_tree});
        return clipboard_text_of_world(m_scene);
    }

    WorldObject* m_panel = nullptr;
    WorldObject* m_tree = nullptr;
};

} // namespace

TEST_F(WorldClipboardTest, copies_stand_beside_have_free_names_and_are_one_step)
{
    const QByteArray text = copied();
    const auto steps = m_scene.journal().step_count();
    const QByteArray before = this->text();
    ASSERT_TRUE(paste_text(m_scene, text).ok());
    ASSERT_EQ(world().objects().size(), 4u);
    const WorldObject* board = world().objects()[2];
    EXPECT_EQ(board->place(), QVector3D(2, 2, 3));
    EXPECT_NE(board->name(), u"Board"_s);
    EXPECT_EQ(static_cast<const PanelState&>(board->object_state()).width, 4);
    EXPECT_EQ(world().objects()[3]->file(), m_tree->file()) << "the model is there once";
    EXPECT_EQ(m_world.selection().objects().size(), 2u);
    EXPECT_EQ(m_scene.journal().step_count(), steps + 1);
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(this->text(), before);
}

TEST_F(WorldClipboardTest, another_scene_takes_models_and_pictures_along)
{
    const QByteArray text = copied();
    m_scene.new_scene();
    ASSERT_TRUE(paste_text(m_scene, text).ok());
    ASSERT_EQ(world().objects().size(), 2u);
    EXPECT_EQ(world().objects()[0]->place(), QVector3D(1, 2, 3)) << "nothing stands there";
    EXPECT_EQ(world().objects()[0]->name(), u"Board"_s);
    EXPECT_TRUE(m_scene.document().files().contains(u"textures/board.png"_s));
    EXPECT_EQ(m_scene.document().files().value(u"models/tree/tree.mtl"_s), "shine");

    m_scene.new_scene();
    put_model("another tree");
    ASSERT_TRUE(paste_text(m_scene, text).ok());
    EXPECT_EQ(world().objects()[1]->file(), u"models/tree2/tree.obj"_s) << "a model of its name is another one";
    EXPECT_EQ(m_scene.document().files().value(u"models/tree2/tree.obj"_s), "bark");
    EXPECT_EQ(m_scene.document().files().value(u"models/tree/tree.obj"_s), "another tree");
}

TEST_F(WorldClipboardTest, what_is_wrong_changes_nothing)
{
    const QByteArray before = text();
    for (const char* text : {R"({"format":1,"objects":[]})", R"({"format":1,"objects":[{"type":99}]})",
                             R"({"format":1,"objects":[{"type":0,"x":"a"}]})",
                             R"({"format":1,"objects":[{"type":0}],"pictures":{"models/../x":"AA=="}})",
                             R"({"format":1,"objects":[{"type":0}],"pictures":{"models/x":"AA=="}})"})
        EXPECT_FALSE(paste_text(m_scene, text).ok()) << text;
    EXPECT_EQ(text(), before);
}
