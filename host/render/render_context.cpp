#include "render_context.h"

#include <QGuiApplication>

namespace tarn {

std::unique_ptr<RenderContext> RenderContext::create()
{
    // The offscreen platform may find a driver, but not one that works everywhere.
    if (QGuiApplication::platformName() != QLatin1String("offscreen"))
        if (auto context = create_qt_context())
            return context;
    return create_egl_context();
}

} // namespace tarn
