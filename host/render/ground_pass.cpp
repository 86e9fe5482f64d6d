#include "ground_pass.h"

#include "gl_objects.h"
#include "shaders.h"

namespace tarn {

struct GroundPass::Parts {
    GlProgram screen;
    GlProgram plane;
    GlVertexArray no_vertices;
    GlTexture background;
};

GroundPass::GroundPass() = default;
GroundPass::~GroundPass() = default;

bool GroundPass::initialize()
{
    m_parts = std::make_unique<Parts>();
    bind_texture(0, m_parts->background.id());
    for (const GLenum filter : {GL_TEXTURE_MIN_FILTER, GL_TEXTURE_MAG_FILTER})
        glTexParameteri(GL_TEXTURE_2D, filter, GL_NEAREST);
    return m_parts->screen.build(render_shaders::screen, render_shaders::ground)
        && m_parts->plane.build(render_shaders::ground_vertex, render_shaders::ground);
}

void GroundPass::prepare(GlProgram& program, const GroundLook& look)
{
    const std::vector<QVector3D> colors = look.is_level ? background_rows(look) : background_heights();
    static_assert(sizeof(QVector3D) == 3 * sizeof(float));
    bind_texture(0, m_parts->background.id());
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB32F, 1, GLsizei(colors.size()), 0, GL_RGB, GL_FLOAT, colors.data());
    program.use();
    program.set("background", 0);
    program.set("steps", look.is_level ? 0.f : float(background_steps));
    program.set("size", QVector2D(float(look.pixels.width()), float(look.pixels.height())));
    program.set("eye", look.eye);
    program.set("ray_origin", look.ray_origin);
    program.set("ray_step_x", look.ray_step_x);
    program.set("ray_step_y", look.ray_step_y);
    program.set("reach", look.reach);
    program.set("line", look.line);
    program.set("spacing", QVector2D(ground::minor_spacing, ground::major_spacing));
    program.set("room", QVector2D(ground::crowded, ground::roomy));
    program.set("axis_width", ground::axis_width);
    program.set("minor_color", ground::minor_color);
    program.set("major_color", ground::major_color);
    program.set("x_axis_color", look.x_axis_color());
    program.set("z_axis_color", look.z_axis_color());
    program.set("glow_color", ground::glow_color);
    program.set("glow_radius", ground::glow_radius);
    glBindVertexArray(m_parts->no_vertices.id());
}

void GroundPass::draw(const GroundLook& look)
{
    prepare(m_parts->screen, look);
    glDrawArrays(GL_TRIANGLES, 0, 3);
}

void GroundPass::draw_plane(const GroundLook& look, const QMatrix4x4& world_to_clip)
{
    prepare(m_parts->plane, look);
    m_parts->plane.set("to_clip", world_to_clip);
    const float x = look.eye.x();
    const float z = look.eye.z();
    m_parts->plane.set("area", QVector4D(x - look.reach, z - look.reach, x + look.reach, z + look.reach));
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
}

} // namespace tarn
