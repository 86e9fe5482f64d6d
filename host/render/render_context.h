#pragma once

#include <memory>

namespace tarn {

/// An OpenGL context of version 3.3 or later without a window.
class RenderContext {
public:
    /// Null where there is none.
    static std::unique_ptr<RenderContext> create();

    virtual ~RenderContext() = default;
    /// Whether the textures made here can be drawn by the program's OpenGL widgets.
    virtual bool shares_with_widgets() const = 0;

    /// Makes a context current as long as it lives, and then the one that was.
    class Current {
    public:
        explicit Current(RenderContext& context) : m_context(context) { m_context.enter(); }
        ~Current() { m_context.leave(); }
        Current(const Current&) = delete;
        Current& operator=(const Current&) = delete;

    private:
        RenderContext& m_context;
    };

protected:
    virtual void enter() = 0;
    virtual void leave() = 0;
};

/// Of Qt, which shares its textures with widgets; null where the platform has none.
std::unique_ptr<RenderContext> create_qt_context();
/// Of EGL, which needs no display server; null where that is missing.
std::unique_ptr<RenderContext> create_egl_context();

} // namespace tarn
