#pragma once

#include "gl_objects.h"
#include "models/model.h"

#include <vector>

namespace tarn {

/// A model's triangles and pictures in OpenGL.
class ModelBuffers {
public:
    explicit ModelBuffers(const Model& model);

    void draw(std::size_t mesh) const;
    GLuint picture(qint32 number) const { return m_pictures[std::size_t(number)].id(); }

private:
    struct Mesh {
        GlVertexArray list;
        GlBuffer vertices;
        GlBuffer indices;
        GLsizei count = 0;
    };

    std::vector<Mesh> m_meshes;
    std::vector<GlTexture> m_pictures;
};

} // namespace tarn
