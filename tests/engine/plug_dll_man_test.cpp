#include "engine/plug_dll_man.h"

#include "support/files.h"
#include "support/printing.h"

using namespace Qt::StringLiterals;
using namespace tarn::test;

TEST(PlugDllMan, what_is_no_plug_in_is_refused_with_its_name)
{
    QTemporaryDir folder;
    const QString text = folder.filePath(u"text.so"_s);
    put(text, "not a library");
    const QString empty = folder.filePath(u"empty.so"_s);
    put(empty, {});
    CPlugDllMan plugs;
    for (const QString& path : {text, empty, folder.filePath(u"missing.so"_s), QString::fromUtf8(TARN_NO_PLUGIN)}) {
        const auto status = plugs.load(path);
        EXPECT_FALSE(status.ok()) << path.toStdString();
        EXPECT_TRUE(status.message().contains(path)) << status.message().toStdString();
    }
    EXPECT_TRUE(plugs.modules().empty());
    EXPECT_EQ(plugs.find_main_object_from_plug_desc({}), nullptr);
}

TEST(PlugDllMan, a_folder_gives_one_failure_for_each_library_that_is_no_plug_in)
{
    QTemporaryDir folder;
    put(folder.filePath(u"a.so"_s), "not a library");
    put(folder.filePath(u"b.so"_s), "nor this");
    put(folder.filePath(u"readme.txt"_s), "not meant to be one");
    QDir(folder.path()).mkdir(u"c.so"_s);
    CPlugDllMan plugs;
    EXPECT_EQ(plugs.load_folder(folder.path()).size(), 2u);
    EXPECT_TRUE(plugs.load_folder(folder.filePath(u"no such folder"_s)).empty());
}
