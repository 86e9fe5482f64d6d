#include "ground_scene.h"

#include "ground_shaders.h"

#include <QImage>

#include <utility>

namespace tarn {

namespace {

bool build(QOpenGLShaderProgram& program, const char* fragment)
{
    return program.addShaderFromSourceCode(QOpenGLShader::Vertex, shaders::screen)
        && program.addShaderFromSourceCode(QOpenGLShader::Fragment, fragment) && program.link();
}

} // namespace

GroundScene::GroundScene() = default;

GroundScene::~GroundScene()
{
    for (const Texture& texture : m_layers)
        if (texture.id)
            glDeleteTextures(1, &texture.id);
}

bool GroundScene::initialize()
{
    initializeOpenGLFunctions();
    if (!m_no_vertices.create() || !m_ground.initialize() || !build(m_compose, shaders::compose))
        return false;
    for (Texture& texture : m_layers) {
        glGenTextures(1, &texture.id);
        bind(0, texture.id);
        for (const GLenum filter : {GL_TEXTURE_MIN_FILTER, GL_TEXTURE_MAG_FILTER})
            glTexParameteri(GL_TEXTURE_2D, filter, GL_NEAREST);
        for (const GLenum wrap : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T})
            glTexParameteri(GL_TEXTURE_2D, wrap, GL_CLAMP_TO_EDGE);
    }
    return true;
}

void GroundScene::bind(int unit, GLuint texture)
{
    glActiveTexture(GLenum(GL_TEXTURE0 + unit));
    glBindTexture(GL_TEXTURE_2D, texture);
}

void GroundScene::set_layer(Layer layer, const QImage& image, const QRect& changed)
{
    Texture& texture = m_layers[layer];
    const bool all = texture.size != image.size();
    const QRect part = all ? image.rect() : changed & image.rect();
    if (part.isEmpty())
        return;
    bind(0, texture.id);
    // A QRgb is one number whatever the byte order of the machine.
    constexpr GLenum order = GL_BGRA;
    constexpr GLenum type = GL_UNSIGNED_INT_8_8_8_8_REV;
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, GLint(image.bytesPerLine() / 4));
    if (all)
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, image.width(), image.height(), 0, order, type, image.constBits());
    else
        glTexSubImage2D(GL_TEXTURE_2D, 0, part.x(), part.y(), part.width(), part.height(), order, type,
                        image.constScanLine(part.y()) + part.x() * 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    texture.size = image.size();
    texture.changed |= part;
}

void GroundScene::draw_world(const GroundLook& look)
{
    if (!m_world || m_world->size() != look.pixels)
        m_world = std::make_unique<QOpenGLFramebufferObject>(look.pixels);
    m_world->bind();
    glViewport(0, 0, look.pixels.width(), look.pixels.height());
    m_ground.draw(look);
    m_no_vertices.bind();
}

void GroundScene::compose(const QRect& part)
{
    glEnable(GL_SCISSOR_TEST);
    glScissor(part.x(), m_drawn.pixels.height() - part.y() - part.height(), part.width(), part.height());
    glDrawArrays(GL_TRIANGLES, 0, 3);
    glDisable(GL_SCISSOR_TEST);
}

void GroundScene::draw(const GroundLook& look, GLuint framebuffer, GLuint world, bool world_changed)
{
    if (look.pixels.isEmpty())
        return;
    // Whoever drew into this context before may have left these on.
    for (const GLenum state : {GL_BLEND, GL_DEPTH_TEST, GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_CULL_FACE})
        glDisable(state);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    m_no_vertices.bind();
    const bool all = look != m_drawn || world != m_shown_world || world_changed;
    if (all && !world)
        draw_world(look);
    m_drawn = look;
    m_shown_world = world;
    m_compose.bind();
    bind(1, m_layers[overlay_layer].id);
    bind(2, m_layers[tool_layer].id);
    bind(3, m_layers[objects_layer].id);
    bind(0, world ? world : m_world->texture());
    m_compose.setUniformValue("world", 0);
    m_compose.setUniformValue("overlay", 1);
    m_compose.setUniformValue("tool", 2);
    m_compose.setUniformValue("objects", 3);
    m_compose.setUniformValue("height", look.pixels.height());
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glViewport(0, 0, look.pixels.width(), look.pixels.height());
    if (all)
        compose(QRect(QPoint(), look.pixels));
    for (Texture& layer : m_layers)
        if (const QRect part = std::exchange(layer.changed, {}); !all && !part.isEmpty())
            compose(part);
    m_compose.release();
    m_no_vertices.release();
}

} // namespace tarn
