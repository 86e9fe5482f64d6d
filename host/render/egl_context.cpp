#include "render_context.h"

#include <QtGlobal>

#if !defined(Q_OS_WIN) && !defined(Q_OS_MACOS)
#include <epoxy/egl.h>
#include <epoxy/gl.h>
#endif

namespace tarn {

#if defined(Q_OS_WIN) || defined(Q_OS_MACOS)

std::unique_ptr<RenderContext> create_egl_context()
{
    return nullptr;
}

#else

namespace {

class EglContext : public RenderContext {
public:
    ~EglContext() override
    {
        if (m_context != EGL_NO_CONTEXT)
            eglDestroyContext(m_display, m_context);
        // The display stays: others of this process may use the same one.
    }

    bool initialize()
    {
        if (!epoxy_has_egl() || !epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_MESA_platform_surfaceless"))
            return false;
        m_display = eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
        if (m_display == EGL_NO_DISPLAY || !eglInitialize(m_display, nullptr, nullptr)
            || !epoxy_has_egl_extension(m_display, "EGL_KHR_surfaceless_context") || !eglBindAPI(EGL_OPENGL_API))
            return false;
        const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
        EGLConfig config = nullptr;
        EGLint count = 0;
        if (!eglChooseConfig(m_display, wanted, &config, 1, &count) || count == 0)
            return false;
        const EGLint version[] = {
            EGL_CONTEXT_MAJOR_VERSION,           3,       EGL_CONTEXT_MINOR_VERSION, 3, EGL_CONTEXT_OPENGL_PROFILE_MASK,
            EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT, EGL_NONE};
        m_context = eglCreateContext(m_display, config, EGL_NO_CONTEXT, version);
        return m_context != EGL_NO_CONTEXT;
    }
    bool shares_with_widgets() const override { return false; }

protected:
    void enter() override
    {
        m_before = {eglGetCurrentDisplay(), eglGetCurrentContext(), eglGetCurrentSurface(EGL_DRAW),
                    eglGetCurrentSurface(EGL_READ)};
        eglMakeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, m_context);
    }
    void leave() override
    {
        if (m_before.context != EGL_NO_CONTEXT)
            eglMakeCurrent(m_before.display, m_before.draw, m_before.read, m_before.context);
        else
            eglMakeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    }

private:
    struct Before {
        EGLDisplay display = EGL_NO_DISPLAY;
        EGLContext context = EGL_NO_CONTEXT;
        EGLSurface draw = EGL_NO_SURFACE;
        EGLSurface read = EGL_NO_SURFACE;
    };

    EGLDisplay m_display = EGL_NO_DISPLAY;
    EGLContext m_context = EGL_NO_CONTEXT;
    Before m_before;
};

} // namespace

std::unique_ptr<RenderContext> create_egl_context()
{
    auto context = std::make_unique<EglContext>();
    return context->initialize() ? std::move(context) : nullptr;
}

#endif

} // namespace tarn
