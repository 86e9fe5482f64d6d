#include "shadows.h"

#include "model_painter.h"
#include "shaders.h"

namespace tarn {

namespace {

constexpr int side = 128;                   ///< pixels of a shadow's picture
constexpr int edge = 7;                     ///< of them, around the silhouette: it is softened
constexpr std::size_t most_pictures = 1024; ///< kept beside those in use
constexpr quint64 kept_frames = 8;
constexpr float strength = 0.5f;

/// How far a shadow moves for a metre of height.
QVector2D slant()
{
    const QVector3D& light = ModelPainter::to_light();
    return {light.x() / light.y(), light.z() / light.y()};
}

QVector3D on_ground(const QVector3D& point)
{
    return {point.x() - slant().x() * point.y(), 0, point.z() - slant().y() * point.y()};
}

ModelBox flattened(const ModelBox& box)
{
    ModelBox flat;
    for (int corner = 0; corner < 8 && !box.is_empty(); ++corner)
        flat.add(on_ground({corner & 1 ? box.low.x() : box.high.x(), corner & 2 ? box.low.y() : box.high.y(),
                            corner & 4 ? box.low.z() : box.high.z()}));
    const QVector3D margin = flat.size() * (float(edge) / (side - 2 * edge)) + QVector3D(0.01f, 0, 0.01f);
    if (!flat.is_empty()) {
        flat.low -= margin;
        flat.high += margin;
    }
    return flat;
}

/// From the world onto a picture of the area.
QMatrix4x4 onto(const QVector4D& area)
{
    const float x = 2 / (area.z() - area.x());
    const float z = 2 / (area.w() - area.y());
    return QMatrix4x4(x, -x * slant().x(), 0, -1 - x * area.x(), //
                      0, -z * slant().y(), z, -1 - z * area.y(), //
                      0, 0, 0, 0,                                //
                      0, 0, 0, 1);
}

void prepare_texture(GLuint texture)
{
    bind_texture(0, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_R8, side, side, 0, GL_RED, GL_UNSIGNED_BYTE, nullptr);
    for (const GLenum filter : {GL_TEXTURE_MIN_FILTER, GL_TEXTURE_MAG_FILTER})
        glTexParameteri(GL_TEXTURE_2D, filter, GL_LINEAR);
    for (const GLenum wrap : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T})
        glTexParameteri(GL_TEXTURE_2D, wrap, GL_CLAMP_TO_EDGE);
}

void draw_into(GLuint texture)
{
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
    glClear(GL_COLOR_BUFFER_BIT);
}

} // namespace

bool Shadows::initialize()
{
    m_no_vertices = std::make_unique<GlVertexArray>();
    m_silhouette = std::make_unique<GlTexture>();
    m_framebuffer = std::make_unique<GlFramebuffer>();
    prepare_texture(m_silhouette->id());
    return m_soften.build(render_shaders::screen, render_shaders::soften_fragment)
        && m_shade.build(render_shaders::ground_vertex, render_shaders::shadow_fragment);
}

ModelBox Shadows::area(const ModelPose& pose, const QMatrix4x4& to_world)
{
    return flattened(pose.box().moved(to_world));
}

void Shadows::prepare(ModelPainter& painter, const ModelPose& pose, const QMatrix4x4& to_world)
{
    const ModelBox place = area(pose, to_world);
    if (place.is_empty())
        return;
    const QVector4D area(place.low.x(), place.low.z(), place.high.x(), place.high.z());
    Key key{pose.revision(), {}};
    for (std::size_t i = 0; i < 9; ++i)
        key.second[i] = to_world(int(i / 3), int(i % 3));
    const auto [picture, is_new] = m_pictures.try_emplace(key);
    picture->second.used = m_frame;
    if (is_new)
        make(picture->second.texture.id(), painter, pose, to_world, area);
    m_prepared.push_back({picture->second.texture.id(), area});
}

void Shadows::make(GLuint texture, ModelPainter& painter, const ModelPose& pose, const QMatrix4x4& to_world,
                   const QVector4D& area)
{
    glBindFramebuffer(GL_FRAMEBUFFER, m_framebuffer->id());
    glViewport(0, 0, side, side);
    for (const GLenum state : {GL_BLEND, GL_DEPTH_TEST, GL_CULL_FACE})
        glDisable(state);
    glClearColor(0, 0, 0, 0);
    draw_into(m_silhouette->id());
    painter.begin(onto(area), {}, true);
    for (const ModelPart& part : pose.model()->parts())
        painter.draw(pose, part, to_world, {});
    prepare_texture(texture);
    draw_into(texture);
    m_soften.use();
    bind_texture(0, m_silhouette->id());
    m_soften.set("shadow", 0);
    glBindVertexArray(m_no_vertices->id());
    glDrawArrays(GL_TRIANGLES, 0, 3);
}

bool Shadows::draw(const QMatrix4x4& world_to_clip)
{
    const bool any = !m_prepared.empty();
    glBindVertexArray(m_no_vertices->id());
    glEnable(GL_BLEND);
    // The darkest counts, not the sum: where two shadows meet there is still only one light that is hidden.
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_TRUE);
    glBlendEquation(GL_MIN);
    m_shade.use();
    m_shade.set("shadow", 0);
    m_shade.set("strength", strength);
    m_shade.set("to_clip", world_to_clip);
    for (const Prepared& shadow : m_prepared) {
        m_shade.set("area", shadow.area);
        bind_texture(0, shadow.texture);
        glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    }
    glBlendEquation(GL_FUNC_ADD);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDisable(GL_BLEND);
    m_prepared.clear();
    forget_old();
    ++m_frame;
    return any;
}

void Shadows::forget_old()
{
    if (m_pictures.size() > most_pictures)
        std::erase_if(m_pictures, [&](const auto& picture) { return picture.second.used + kept_frames < m_frame; });
}

} // namespace tarn
