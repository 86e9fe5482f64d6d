#include "model_buffers.h"

namespace tarn {

namespace {

/// Puts lists of vertices one after the other into the bound buffer; as many attributes as the programs take.
class VertexLists {
public:
    explicit VertexLists(qsizetype bytes) { glBufferData(GL_ARRAY_BUFFER, bytes, nullptr, GL_STATIC_DRAW); }

    template <class T>
    void add(GLuint attribute, const std::vector<T>& list, GLint width, GLenum type)
    {
        if (list.empty())
            return;
        const auto size = qsizetype(list.size() * sizeof(T));
        glBufferSubData(GL_ARRAY_BUFFER, m_at, size, list.data());
        const void* place = reinterpret_cast<const void*>(m_at);
        glEnableVertexAttribArray(attribute);
        if (type == GL_FLOAT)
            glVertexAttribPointer(attribute, width, type, GL_FALSE, 0, place);
        else
            glVertexAttribIPointer(attribute, width, type, 0, place);
        m_at += size;
    }

private:
    qsizetype m_at = 0;
};

template <class T>
qsizetype bytes_of(const std::vector<T>& list)
{
    return qsizetype(list.size() * sizeof(T));
}

} // namespace

ModelBuffers::ModelBuffers(const Model& model)
{
    for (const ModelMesh& mesh : model.data().meshes) {
        Mesh& made = m_meshes.emplace_back();
        made.count = GLsizei(mesh.indices.size());
        glBindVertexArray(made.list.id());
        glBindBuffer(GL_ARRAY_BUFFER, made.vertices.id());
        VertexLists lists(bytes_of(mesh.places) + bytes_of(mesh.normals) + bytes_of(mesh.uvs) + bytes_of(mesh.tangents)
                          + bytes_of(mesh.bone_numbers) + bytes_of(mesh.bone_weights));
        lists.add(0, mesh.places, 3, GL_FLOAT);
        lists.add(1, mesh.normals, 3, GL_FLOAT);
        lists.add(2, mesh.uvs, 2, GL_FLOAT);
        lists.add(3, mesh.tangents, 4, GL_FLOAT);
        lists.add(4, mesh.bone_numbers, 4, GL_UNSIGNED_SHORT);
        lists.add(5, mesh.bone_weights, 4, GL_FLOAT);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, made.indices.id());
        glBufferData(GL_ELEMENT_ARRAY_BUFFER, bytes_of(mesh.indices), mesh.indices.data(), GL_STATIC_DRAW);
    }
    glBindVertexArray(0);
    for (const ModelPicture& picture : model.data().pictures)
        upload(m_pictures.emplace_back(), picture.image);
}

void ModelBuffers::draw(std::size_t mesh) const
{
    glBindVertexArray(m_meshes[mesh].list.id());
    glDrawElements(GL_TRIANGLES, m_meshes[mesh].count, GL_UNSIGNED_INT, nullptr);
}

} // namespace tarn
