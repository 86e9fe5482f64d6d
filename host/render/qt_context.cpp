#include "render_context.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QPointer>

namespace tarn {

namespace {

class QtContext : public RenderContext {
public:
    bool initialize()
    {
        QSurfaceFormat format;
        format.setRenderableType(QSurfaceFormat::OpenGL);
        format.setVersion(3, 3);
        format.setProfile(QSurfaceFormat::CoreProfile);
        m_surface.setFormat(format);
        m_surface.create();
        m_context.setFormat(format);
        m_context.setShareContext(QOpenGLContext::globalShareContext());
        if (!m_surface.isValid() || !m_context.create())
            return false;
        const Current current(*this); // A view may be drawing itself.
        return QOpenGLContext::currentContext() == &m_context && !m_context.isOpenGLES()
            && m_context.format().version() >= qMakePair(3, 3);
    }
    bool shares_with_widgets() const override { return m_context.shareContext() != nullptr; }

protected:
    void enter() override
    {
        m_before = QOpenGLContext::currentContext();
        m_surface_before = m_before ? m_before->surface() : nullptr;
        m_context.makeCurrent(&m_surface);
    }
    void leave() override
    {
        if (m_before && m_surface_before)
            m_before->makeCurrent(m_surface_before);
        else
            m_context.doneCurrent();
    }

private:
    QOffscreenSurface m_surface;
    QOpenGLContext m_context;
    QPointer<QOpenGLContext> m_before;
    QSurface* m_surface_before = nullptr;
};

} // namespace

std::unique_ptr<RenderContext> create_qt_context()
{
    auto context = std::make_unique<QtContext>();
    return context->initialize() ? std::move(context) : nullptr;
}

} // namespace tarn
