#include "gl_surface.h"

#include "camera_look.h"
#include "engine/base_world.h"
#include "engine/world_renderer.h"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>

namespace tarn {

namespace {

QSurfaceFormat wanted_format()
{
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    // The lines of the ground are smooth by themselves and the interface is copied pixel by pixel, so neither samples
    // nor depth are of use.
    format.setDepthBufferSize(0);
    format.setStencilBufferSize(0);
    return format;
}

bool try_context()
{
    // The offscreen platform may find a driver, but then cannot show what it drew.
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        return false;
    QOffscreenSurface surface;
    surface.setFormat(wanted_format());
    surface.create();
    QOpenGLContext context;
    context.setFormat(wanted_format());
    if (!surface.isValid() || !context.create() || !context.makeCurrent(&surface))
        return false;
    bool works = !context.isOpenGLES() && context.format().version() >= qMakePair(3, 3);
    if (works)
        works = GroundScene().initialize();
    context.doneCurrent();
    return works;
}

} // namespace

bool GlSurface::available()
{
    static const bool works = try_context();
    return works;
}

GlSurface::GlSurface(CBaseWorld& world, OverlayBuffer& overlay, QWidget* parent)
    : QOpenGLWidget(parent), m_world(world), m_overlay(overlay)
{
    setFormat(wanted_format());
    // Keeps the last frame, so that a frame costs what changed.
    setUpdateBehavior(PartialUpdate);
}

GlSurface::~GlSurface()
{
    release();
}

void GlSurface::release()
{
    if (!m_scene)
        return;
    disconnect(context(), &QOpenGLContext::aboutToBeDestroyed, this, nullptr);
    makeCurrent();
    m_scene.reset();
    doneCurrent();
}

void GlSurface::initializeGL()
{
    m_scene = std::make_unique<GroundScene>();
    if (!m_scene->initialize())
        m_scene.reset();
    // A view that moves into another window gets a new context.
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &GlSurface::release);
}

void GlSurface::resizeGL(int, int)
{
    if (m_scene)
        m_scene->invalidate();
}

void GlSurface::paintGL()
{
    if (!m_scene)
        return;
    const double dpr = devicePixelRatioF();
    m_objects.follow(m_overlay);
    const ScreenPlacing placing = m_overlay.placing(size());
    const QRect moved = m_objects.update(m_world.objects_layer(), size(), dpr);
    m_scene->set_layer(GroundScene::objects_layer, m_objects.image(), moved);
    const QRect changed = m_overlay.update(m_world.overlay(), size(), dpr);
    m_scene->set_layer(GroundScene::overlay_layer, m_overlay.image(), changed);
    const QRect painted = m_tool.update(m_world.mouse_tool(), size(), dpr, placing);
    m_scene->set_layer(GroundScene::tool_layer, m_tool.image(), painted);
    const RenderView view = camera_render_view(m_world, size(), dpr, placing, m_overlay.screen_on(size()));
    WorldRenderer& renderer = m_world.renderer();
    const GLuint world = renderer.texture(view_target, view, WorldRenderer::Eye::Author);
    m_scene->draw(ground_look(view), defaultFramebufferObject(), world, world && renderer.cost().drawn);
}

} // namespace tarn
