#include "engine/plug_dll_man.h"

#include "support/scene_fixture.h"

#include <QLibrary>

using namespace tarn;
using namespace tarn::test;

namespace {

const QString plugin_path = QString::fromUtf8(TARN_SCENE_PLUGIN);
const QString plugin_description = QStringLiteral("TARN-GUI-SCENE");

} // namespace

TEST(ScenePlugin, is_loaded_and_found_by_its_description)
{
    CPlugDllMan plugs;
    const Status status = plugs.load(plugin_path);
    ASSERT_TRUE(status.ok()) << status.message().toStdString();
    EXPECT_EQ(plugs.modules().front()->type(), plug_type_scene);
    EXPECT_NE(plugs.find_main_object_from_plug_desc(plugin_description), nullptr);
    EXPECT_EQ(plugs.find_main_object_from_plug_desc(u"TARN-GUI"_s), nullptr);
    plugs.unload_all();
    EXPECT_EQ(plugs.find_main_object_from_plug_desc(plugin_description), nullptr);
    EXPECT_TRUE(plugs.load(plugin_path).ok()) << "once more after unloading";
}

TEST(ScenePlugin, loaded_a_second_time_is_refused_and_the_first_lives_on)
{
    CBaseWorld world;
    CPlugDllMan plugs;
    ASSERT_TRUE(plugs.load(plugin_path).ok());
    auto* scene = static_cast<CGuiPlugScene*>(plugs.find_main_object_from_plug_desc(plugin_description));
    scene->on_world_created(&world);
    scene->gui_core().create_dialog({0, 0, 100, 100});
    const Status again = plugs.load(plugin_path);
    EXPECT_FALSE(again.ok());
    EXPECT_TRUE(again.message().contains(plugin_path));
    QTemporaryDir folder;
    const QString link = folder.filePath(u"libother.so"_s);
    ASSERT_TRUE(QFile::link(plugin_path, link));
    EXPECT_FALSE(plugs.load(link).ok());
    EXPECT_EQ(plugs.modules().size(), 1u);
    // The library's own function answers its present main object: it has to be the one that holds the dialog.
    const auto create = reinterpret_cast<PlugCreateFunction>(QLibrary::resolve(plugin_path, "g_create_main_object"));
    ASSERT_NE(create, nullptr);
    EXPECT_EQ(static_cast<CGuiPlugScene*>(create())->gui_core().GetDialogs().size(), 1);
}
