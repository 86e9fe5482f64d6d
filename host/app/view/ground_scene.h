#pragma once

#include "render/ground_pass.h"

#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>
#include <QOpenGLShaderProgram>
#include <QOpenGLVertexArrayObject>
#include <QRect>

#include <array>
#include <memory>

class QImage;

namespace tarn {

/// Draws a view with OpenGL 3.3. Lives in one context, which is current in every call, the destructor too.
class GroundScene : private QOpenGLExtraFunctions {
public:
    /// The flat pictures over the world, lowest first.
    enum Layer { objects_layer, overlay_layer, tool_layer, layer_count };

    GroundScene();
    ~GroundScene();
    GroundScene(const GroundScene&) = delete;
    GroundScene& operator=(const GroundScene&) = delete;

    /// False when the driver does not accept the programs; then nothing else may be called.
    bool initialize();
    /// Gives the layer its picture, of which `changed` differs from the one before.
    void set_layer(Layer layer, const QImage& image, const QRect& changed);
    /// The framebuffer lost what was drawn into it.
    void invalidate() { m_drawn = {}; }
    /// Brings the framebuffer up to date: draws what changed since the last time. `world`: a texture that shows the world,
    /// another one than before when `world_changed`; 0: the ground alone is the world.
    void draw(const GroundLook& look, GLuint framebuffer, GLuint world, bool world_changed);

private:
    struct Texture {
        GLuint id = 0;
        QSize size;
        QRect changed; ///< since the last draw()
    };

    void draw_world(const GroundLook& look);
    void compose(const QRect& part);
    void bind(int unit, GLuint texture);

    GroundPass m_ground;
    QOpenGLShaderProgram m_compose;
    QOpenGLVertexArrayObject m_no_vertices;
    std::array<Texture, layer_count> m_layers;
    std::unique_ptr<QOpenGLFramebufferObject> m_world;
    GroundLook m_drawn; ///< what the framebuffer shows
    GLuint m_shown_world = 0;
};

} // namespace tarn
