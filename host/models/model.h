#pragma once

#include "core/status.h"
#include "model_box.h"

#include <QImage>
#include <QMatrix4x4>
#include <QQuaternion>
#include <QString>
#include <QVector2D>
#include <QVector4D>

#include <array>
#include <memory>
#include <vector>

namespace tarn {

/// What a model may have. Far above what an author shows, low enough to keep a hostile file from filling the memory or
/// holding up the program.
struct ModelLimits {
    static constexpr qint64 file_size = qint64(112) << 20; ///< bytes of the file that holds all of it
    static constexpr qsizetype nodes = 16'384;
    static constexpr qsizetype meshes = 4'096;
    static constexpr qsizetype materials = 4'096;
    static constexpr qsizetype pictures = 256;
    static constexpr int picture_side = 4'096;                ///< pixels
    static constexpr qint64 picture_bytes = qint64(64) << 20; ///< decoded, all together
    static constexpr qsizetype mesh_bones = 128;              ///< of one mesh: what a shader takes at a time
    static constexpr qsizetype bones = 65'536;                ///< of all meshes together
    static constexpr qsizetype actions = 1'024;
    static constexpr qsizetype tracks = 131'072; ///< of all actions together
    static constexpr qsizetype sources = 1'024;
    static constexpr qsizetype name_length = 255;
    /// A mesh that several nodes show counts as often as it is drawn.
    static constexpr qsizetype triangles = 2'000'000;
    static constexpr qsizetype vertices = 2'000'000;
    static constexpr float largest_number = 1e9f; ///< of places, factors and times
};

/// The values of something at ascending times in seconds. Between two of them it changes evenly, before and after them it
/// stays.
template <class T>
struct ModelKeys {
    std::vector<float> times;
    std::vector<T> values; ///< as many as times
};

/// How one node moves in an action; a list without keys leaves that part as it is at rest.
struct ModelTrack {
    quint32 node = 0;
    ModelKeys<QVector3D> places;
    ModelKeys<QQuaternion> turns;
    ModelKeys<QVector3D> scales;
};

struct ModelAction {
    QString name;
    float duration = 0; ///< seconds
    std::vector<ModelTrack> tracks;
};

/// A node's place under its parent: scaled first, then turned, then moved.
struct ModelNode {
    QString name;
    qint32 parent = -1; ///< the number of a node before this one; -1: none
    QVector3D place;
    QQuaternion turn;
    QVector3D scale{1, 1, 1};
    std::vector<quint32> meshes;
};

struct ModelBone {
    quint32 node = 0;
    QMatrix4x4 offset; ///< from the mesh's space into the node's, at rest
};

/// Triangles of one material. Lists of vertices have one entry for each vertex, or none where the mesh lacks that.
struct ModelMesh {
    QString name;
    quint32 material = 0;
    std::vector<QVector3D> places;
    std::vector<QVector3D> normals;
    std::vector<QVector4D> tangents; ///< w: 1 or -1, the side of the second tangent
    std::vector<QVector2D> uvs;      ///< (0, 0) is the picture's top left
    std::vector<std::array<quint16, 4>> bone_numbers;
    std::vector<QVector4D> bone_weights;
    std::vector<quint32> indices; ///< three for each triangle, counter-clockwise seen from its front
    /// Those of a skinned mesh, which stands where its bones are and not where its node is; otherwise empty.
    std::vector<ModelBone> bones;
};

enum class AlphaMode : quint8 { Opaque, Mask, Blend };

struct ModelMaterial {
    QString name;
    QVector4D color{1, 1, 1, 1}; ///< multiplied with the picture
    qint32 picture = -1;         ///< -1: none
    qint32 normal_map = -1;
    AlphaMode alpha = AlphaMode::Opaque;
    float cutoff = 0.5f; ///< with AlphaMode::Mask, what is less opaque is not drawn
    bool two_sided = false;
};

struct ModelPicture {
    QString name;       ///< the file's, without a folder; may be empty
    QByteArray content; ///< the SHA-256 of the picture's file, to find the same one elsewhere
    QImage image;       ///< Format_RGBA8888
};

/// A file beside the model's own that was asked for when the model was imported.
struct ModelSource {
    QString name;       ///< relative to the model's folder
    QByteArray content; ///< the SHA-256 of the file; empty: there was none
};

/// Whether a model moves at all, its nodes do, or a skeleton bends it.
enum class ModelKind { Static, Animated, Skinned };

/// What an imported model consists of. Units are metres, y is up.
struct ModelData {
    std::vector<ModelNode> nodes; ///< parents before their children
    std::vector<ModelMesh> meshes;
    std::vector<ModelMaterial> materials;
    std::vector<ModelPicture> pictures;
    std::vector<ModelAction> actions;
    std::vector<ModelSource> sources;
};

/// Whether everything in it is sound and within ModelLimits. The message is about "the model" and names no file.
Status check_model(const ModelData& data);

/// A mesh as it is drawn.
struct ModelPart {
    quint32 mesh = 0;
    quint32 node = 0; ///< without a meaning for a skinned mesh
};

class Model;
using ModelPtr = std::shared_ptr<const Model>;

/// A sound model, and what follows from it. It never changes.
class Model {
public:
    static Result<ModelPtr> make(ModelData data);

    const ModelData& data() const { return m_data; }
    ModelKind kind() const { return m_kind; }
    const std::vector<ModelPart>& parts() const { return m_parts; }
    /// Of the model at rest; empty when it has no vertices.
    const ModelBox& box() const { return m_box; }
    /// Of the mesh's vertices as they are in the file.
    const ModelBox& mesh_box(std::size_t mesh) const { return m_mesh_boxes[mesh]; }
    /// For each bone of the mesh the box of the vertices that it moves; empty for one that moves none.
    const std::vector<ModelBox>& bone_boxes(std::size_t mesh) const { return m_bone_boxes[mesh]; }
    /// The number of the first action of that name; -1: none.
    int find_action(const QString& name) const;
    qsizetype triangle_count() const { return m_triangles; } ///< as drawn

private:
    explicit Model(ModelData data);

    ModelData m_data;
    ModelKind m_kind = ModelKind::Static;
    std::vector<ModelPart> m_parts;
    ModelBox m_box;
    std::vector<ModelBox> m_mesh_boxes;
    std::vector<std::vector<ModelBox>> m_bone_boxes;
    qsizetype m_triangles = 0;
};

} // namespace tarn
