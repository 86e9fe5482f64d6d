// The functions by which the host loads this plug-in.

#include "engine/plug_dll_man.h"
#include "gui_ui.h"

#include <cwchar>
#include <new>

namespace {

CGuiUI* main_object = nullptr;

constexpr wchar_t description[] = L"TARN-GUI-UI";

} // namespace

extern "C" {

/// A second call answers the object that exists already.
Q_DECL_EXPORT CPlugInfo* g_create_main_object()
{
    if (!main_object)
        main_object = new (std::nothrow) CGuiUI;
    return main_object;
}

Q_DECL_EXPORT void g_destroy_main_object()
{
    delete main_object;
    main_object = nullptr;
}

Q_DECL_EXPORT int g_get_plug_type()
{
    return plug_type_ui;
}

Q_DECL_EXPORT int g_get_plug_desc(wchar_t* buffer)
{
    std::wmemcpy(buffer, description, std::size(description));
    return 0;
}
}
