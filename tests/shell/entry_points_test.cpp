#include "engine/plug_dll_man.h"
#include "frame/base_plug_ui.h"

#include <QLibrary>

#include <gtest/gtest.h>

#include <cwchar>

namespace {

template <class Function>
Function entry(const char* name)
{
    return reinterpret_cast<Function>(QLibrary::resolve(QStringLiteral(TARN_UI_PLUG_IN), name));
}

TEST(EntryPoints, tell_type_and_description_within_the_buffer)
{
    wchar_t buffer[plug_desc_size];
    std::wmemset(buffer, L'?', plug_desc_size);
    ASSERT_EQ(entry<PlugDescFunction>("g_get_plug_desc")(buffer), 0);
    EXPECT_EQ(std::wstring(buffer), L"TARN-GUI-UI");
    EXPECT_EQ(buffer[12], L'?') << "more was written than the description";
    EXPECT_EQ(entry<PlugTypeFunction>("g_get_plug_type")(), 3);
}

TEST(EntryPoints, create_one_main_object_and_destroy_it_once)
{
    const auto create = entry<PlugCreateFunction>("g_create_main_object");
    const auto destroy = entry<PlugDestroyFunction>("g_destroy_main_object");
    destroy(); // Nothing was created yet.
    CPlugInfo* first = create();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(create(), first) << "a second call leaks the first object";
    EXPECT_NE(dynamic_cast<CBasePlugUi*>(first), nullptr);
    destroy();
    destroy();
}

} // namespace
