#include "model_painter.h"

#include "shaders.h"

#include <algorithm>

namespace tarn {

namespace {

enum Feature {
    skinned = 1,
    with_picture = 2,
    with_normal_map = 4,
    masked = 8,
    silhouette = 16,
    highlighted = 32,
    glowing = 64
};

const QVector3D light_color(0.62f, 0.59f, 0.54f);
const QVector3D sky_color(0.52f, 0.56f, 0.66f);
const QVector3D ground_color(0.30f, 0.29f, 0.33f);
constexpr GLuint bones_point = 0;
constexpr std::size_t matrix_floats = 16;

std::string defines_of(int features)
{
    constexpr std::pair<int, const char*> names[] = {
        {skinned, "SKINNED"}, {with_picture, "PICTURE"},  {with_normal_map, "NORMAL_MAP"},
        {masked, "MASKED"},   {silhouette, "SILHOUETTE"}, {highlighted, "HIGHLIGHT"},
        {glowing, "GLOWS"}};
    std::string lines;
    for (const auto& [feature, name] : names)
        if (features & feature)
            lines += std::string("#define ") + name + "\n";
    return lines;
}

} // namespace

const QVector3D& ModelPainter::to_light()
{
    static const QVector3D direction = QVector3D(0.42f, 0.9f, 0.55f).normalized();
    return direction;
}

bool ModelPainter::initialize()
{
    m_bones = std::make_unique<GlBuffer>();
    return program(0) && program(skinned | with_picture | with_normal_map | masked);
}

GlProgram* ModelPainter::program(int features)
{
    const auto known = m_programs.find(features);
    if (known != m_programs.end())
        return known->second.get();
    auto made = std::make_unique<GlProgram>();
    if (!made->build(render_shaders::model_vertex, render_shaders::model_fragment, defines_of(features)))
        made.reset();
    if (made && features & skinned)
        glUniformBlockBinding(made->id(), glGetUniformBlockIndex(made->id(), "Bones"), bones_point);
    return m_programs.emplace(features, std::move(made)).first->second.get();
}

void ModelPainter::begin(const QMatrix4x4& world_to_clip, const QVector3D& eye, bool only_silhouette)
{
    m_world_to_clip = world_to_clip;
    m_eye = eye;
    m_silhouette = only_silhouette;
    m_used = nullptr;
    m_prepared.clear();
}

/// What is the same for all parts that a program draws is set once.
GlProgram* ModelPainter::use_program(int features)
{
    GlProgram* wanted = program(features);
    if (!wanted || wanted == m_used)
        return wanted;
    wanted->use();
    m_used = wanted;
    if (std::find(m_prepared.begin(), m_prepared.end(), wanted) != m_prepared.end())
        return wanted;
    m_prepared.push_back(wanted);
    wanted->set("picture", 0);
    wanted->set("normal_map", 1);
    wanted->set("eye", m_eye);
    wanted->set("to_light", to_light());
    wanted->set("light_color", light_color);
    wanted->set("sky_color", sky_color);
    wanted->set("ground_color", ground_color);
    return wanted;
}

void ModelPainter::upload_bones(std::span<const QMatrix4x4> bones)
{
    m_bone_floats.resize(std::size_t(ModelLimits::mesh_bones) * matrix_floats);
    for (std::size_t i = 0; i < bones.size(); ++i)
        std::copy_n(bones[i].constData(), matrix_floats, m_bone_floats.begin() + std::ptrdiff_t(i * matrix_floats));
    glBindBuffer(GL_UNIFORM_BUFFER, m_bones->id());
    // Anew each time: the figure before may not be drawn yet.
    glBufferData(GL_UNIFORM_BUFFER, GLsizeiptr(m_bone_floats.size() * sizeof(float)), m_bone_floats.data(),
                 GL_STREAM_DRAW);
    glBindBufferBase(GL_UNIFORM_BUFFER, bones_point, m_bones->id());
}

void ModelPainter::draw(const ModelPose& pose, const ModelPart& part, const QMatrix4x4& to_world, const PartLook& look)
{
    const ModelBuffers& buffers = entry(pose.model()).buffers;
    const ModelData& data = pose.model()->data();
    const ModelMesh& mesh = data.meshes[part.mesh];
    const ModelMaterial& material = data.materials[mesh.material];
    const GLuint own = material.picture >= 0 ? buffers.picture(material.picture) : 0;
    const GLuint picture = look.picture ? look.picture : own;
    const bool shows_picture = picture && !mesh.uvs.empty();
    const bool is_masked = material.alpha == AlphaMode::Mask && shows_picture;
    const bool bumpy = material.normal_map >= 0 && !mesh.tangents.empty() && !m_silhouette;
    int features = (mesh.bones.empty() ? 0 : skinned) | (m_silhouette ? silhouette : 0) | (is_masked ? masked : 0)
        | (bumpy ? with_normal_map : 0);
    if (look.highlight.w() > 0 && !m_silhouette)
        features |= highlighted;
    if (look.glows && !m_silhouette)
        features |= glowing;
    if (shows_picture && (is_masked || !m_silhouette))
        features |= with_picture;
    GlProgram* used = use_program(features);
    if (!used)
        return;
    const QMatrix4x4 matrix = to_world * pose.matrix(part);
    used->set("to_clip", m_world_to_clip * matrix);
    if (!m_silhouette) {
        used->set("to_world", matrix);
        used->set("normal_to_world", matrix.normalMatrix());
        used->set("highlight", look.highlight);
    }
    if (!m_silhouette || is_masked) {
        used->set("color", material.color * look.tint);
        used->set("cutoff", material.cutoff);
    }
    if (features & with_picture)
        bind_texture(0, picture);
    if (bumpy)
        bind_texture(1, buffers.picture(material.normal_map));
    if (!mesh.bones.empty())
        upload_bones(pose.bones(part.mesh));
    (material.two_sided || m_silhouette ? glDisable : glEnable)(GL_CULL_FACE);
    glFrontFace(matrix.determinant() < 0 ? GL_CW : GL_CCW);
    buffers.draw(part.mesh);
}

ModelPainter::Entry& ModelPainter::entry(const ModelPtr& model)
{
    auto& entry = m_entries[model.get()];
    if (!entry)
        entry.reset(new Entry{ModelBuffers(*model), ModelPose(model)});
    return *entry;
}

void ModelPainter::forget_unused()
{
    // Only the entry itself still has the model.
    std::erase_if(m_entries, [](const auto& entry) { return entry.second->rest.model().use_count() == 1; });
}

} // namespace tarn
