#pragma once

#include "gl_objects.h"
#include "models/model_box.h"

#include <array>
#include <map>
#include <memory>
#include <vector>

namespace tarn {

class ModelPainter;
class ModelPose;

/// Soft shadows on the ground. An item's shadow is a picture that depends on its pose and its turn and size, not on where
/// it stands, so it is drawn once for many frames.
class Shadows {
public:
    /// False when the driver does not accept the programs; then nothing else may be called.
    bool initialize();

    /// The shadow's place on the ground.
    static ModelBox area(const ModelPose& pose, const QMatrix4x4& to_world);

    /// Makes the shadow's picture, unless there is one. Binds other framebuffers.
    void prepare(ModelPainter& painter, const ModelPose& pose, const QMatrix4x4& to_world);
    /// Leaves in the opacity of the bound framebuffer, which is 1 before, how much light reaches the ground with all that
    /// was prepared since. False when nothing was.
    bool draw(const QMatrix4x4& world_to_clip);

private:
    /// The pose's revision, and how it is turned and scaled.
    using Key = std::pair<quint64, std::array<float, 9>>;
    struct Picture {
        GlTexture texture;
        quint64 used = 0; ///< number of the frame
    };
    struct Prepared {
        GLuint texture;
        QVector4D area; ///< x and z from, x and z to
    };

    void make(GLuint texture, ModelPainter& painter, const ModelPose& pose, const QMatrix4x4& to_world,
              const QVector4D& area);
    void forget_old();

    GlProgram m_soften;
    GlProgram m_shade;
    std::unique_ptr<GlVertexArray> m_no_vertices;
    std::unique_ptr<GlTexture> m_silhouette;
    std::unique_ptr<GlFramebuffer> m_framebuffer;
    std::map<Key, Picture> m_pictures;
    std::vector<Prepared> m_prepared;
    quint64 m_frame = 0;
};

} // namespace tarn
