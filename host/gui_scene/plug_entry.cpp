// The functions by which the host loads this plug-in.

#include "engine/plug_dll_man.h"
#include "gui_plug_scene.h"

#include <QtGlobal>

#include <cwchar>

namespace {

CGuiPlugScene* main_object = nullptr;

constexpr wchar_t description[] = L"TARN-GUI-SCENE";

} // namespace

extern "C" {

Q_DECL_EXPORT CPlugInfo* g_create_main_object()
{
    if (!main_object)
        main_object = new (std::nothrow) CGuiPlugScene;
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
