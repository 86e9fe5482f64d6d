#pragma once

#include "draw_item.h"
#include "model_buffers.h"

#include <map>
#include <memory>

namespace tarn {

/// What a part looks like beside its material.
struct PartLook {
    QVector4D tint{1, 1, 1, 1}; ///< opacity included
    QVector4D highlight;        ///< opacity 0: none
    GLuint picture = 0;         ///< in place of the material's; 0: the material's
    bool glows = false;         ///< its colours are not lit
};

/// Draws parts of posed models into whatever framebuffer is bound.
class ModelPainter {
public:
    /// False when the driver does not accept the programs; then nothing else may be called.
    bool initialize();

    /// From where the parts that follow are seen. `silhouette`: they are filled with white.
    void begin(const QMatrix4x4& world_to_clip, const QVector3D& eye, bool silhouette);
    void draw(const ModelPose& pose, const ModelPart& part, const QMatrix4x4& to_world, const PartLook& look);

    /// The model at rest.
    const ModelPose& rest(const ModelPtr& model) { return entry(model).rest; }
    /// Frees what models took that nobody else has any more.
    void forget_unused();

    static const QVector3D& to_light(); ///< towards the one light, of length 1

private:
    struct Entry {
        ModelBuffers buffers;
        ModelPose rest;
    };

    Entry& entry(const ModelPtr& model);
    GlProgram* program(int features);
    GlProgram* use_program(int features);
    void upload_bones(std::span<const QMatrix4x4> bones);

    std::map<int, std::unique_ptr<GlProgram>> m_programs; ///< by features; null: refused
    std::map<const Model*, std::unique_ptr<Entry>> m_entries;
    std::unique_ptr<GlBuffer> m_bones;
    std::vector<float> m_bone_floats;
    QMatrix4x4 m_world_to_clip;
    QVector3D m_eye;
    bool m_silhouette = false;
    GlProgram* m_used = nullptr; ///< its uniforms of the view are set
    std::vector<const GlProgram*> m_prepared;
};

} // namespace tarn
