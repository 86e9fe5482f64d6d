// The functions by which the host loads this plug-in.

#include "engine/plug_dll_man.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_tools.h"

#include <QtGlobal>

#include <cwchar>

namespace {

CGuiPlugScene* main_object = nullptr;

constexpr wchar_t description[] = L"TARN-GUI-SCENE";

CGuiPlugScene* make_scene()
{
    auto* scene = new CGuiPlugScene;
    scene->set_tools(tarn::make_gui_tools);
    return scene;
}

} // namespace

extern "C" {

Q_DECL_EXPORT CPlugInfo* g_create_main_object()
{
    if (!main_object)
        main_object = make_scene();
    return main_object;
}

Q_DECL_EXPORT void g_destroy_main_object()
{
    delete main_object;
    main_object = nullptr;
}

Q_DECL_EXPORT int g_get_plug_type()
{
    return plug_type_scene;
}

Q_DECL_EXPORT int g_get_plug_desc(wchar_t* buffer)
{
    std::wmemcpy(buffer, description, std::size(description));
    return 0;
}
}
