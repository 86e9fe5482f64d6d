#pragma once

#include "ground_scene.h"
#include "overlay_buffer.h"
#include "tool_layer.h"

#include <QOpenGLWidget>

#include <memory>

class CBaseWorld;

namespace tarn {

/// What a view shows through OpenGL.
class GlSurface : public QOpenGLWidget {
public:
    /// Whether this computer can do it. Tried once, the first time.
    static bool available();

    GlSurface(CBaseWorld& world, OverlayBuffer& overlay, QWidget* parent);
    ~GlSurface() override;

protected:
    void initializeGL() override;
    void resizeGL(int width, int height) override;
    void paintGL() override;

private:
    void release();

    CBaseWorld& m_world;
    OverlayBuffer m_objects;
    OverlayBuffer& m_overlay;
    ToolLayer m_tool;
    std::unique_ptr<GroundScene> m_scene;
};

} // namespace tarn
