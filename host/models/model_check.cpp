#include "core/language.h"
#include "model.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

/// Remembers the first thing that is wrong.
class Check {
public:
    bool holds(bool condition, const QString& message)
    {
        if (!condition && m_message.isNull())
            m_message = message;
        return condition;
    }
    bool sound(bool condition, const char16_t* chinese, const char16_t* english)
    {
        return condition || holds(false, lang(chinese, english));
    }
    void at_most(qsizetype count, qsizetype limit, const char16_t* chinese, const char16_t* english)
    {
        if (count > limit)
            holds(false,
                  lang(u"模型的%1过多（最多 %2）", u"the model has too many %1 (at most %2)")
                      .arg(lang(chinese, english))
                      .arg(limit));
    }
    bool failed() const { return !m_message.isNull(); }
    Status status() const { return failed() ? Status::error(m_message) : Status(); }

private:
    QString m_message;
};

bool is_sound(float number)
{
    return std::abs(number) <= ModelLimits::largest_number; // False for what is no number, too.
}

template <int N, class Vector>
bool are_sound(const std::vector<Vector>& vectors)
{
    return std::all_of(vectors.begin(), vectors.end(), [](const Vector& vector) {
        for (int i = 0; i < N; ++i)
            if (!is_sound(vector[i]))
                return false;
        return true;
    });
}

bool is_sound(const QVector3D& vector)
{
    return is_sound(vector.x()) && is_sound(vector.y()) && is_sound(vector.z());
}

bool is_sound(const QQuaternion& turn)
{
    // One of no length has no direction to turn.
    return is_sound(turn.scalar()) && is_sound(turn.vector()) && turn.lengthSquared() > 1e-6f;
}

bool is_sound(const QMatrix4x4& matrix)
{
    return std::all_of(matrix.constData(), matrix.constData() + 16, [](float number) { return is_sound(number); });
}

template <class T>
bool is_sound(const ModelKeys<T>& keys)
{
    if (keys.times.size() != keys.values.size() || !std::is_sorted(keys.times.begin(), keys.times.end()))
        return false;
    return std::all_of(keys.times.begin(), keys.times.end(), [](float time) { return is_sound(time) && time >= 0; })
        && std::all_of(keys.values.begin(), keys.values.end(), [](const T& value) { return is_sound(value); });
}

class ModelCheck : public Check {
public:
    explicit ModelCheck(const ModelData& data) : m_data(data) {}

    Status run()
    {
        counts();
        nodes();
        if (!failed())
            materials();
        if (!failed())
            meshes();
        if (!failed())
            drawn();
        if (!failed())
            actions();
        return status();
    }

private:
    void name(const QString& name)
    {
        sound(name.size() <= ModelLimits::name_length, u"模型中有过长的名称", u"the model has a name that is too long");
    }

    void counts()
    {
        at_most(qsizetype(m_data.nodes.size()), ModelLimits::nodes, u"节点", u"nodes");
        at_most(qsizetype(m_data.meshes.size()), ModelLimits::meshes, u"网格", u"meshes");
        at_most(qsizetype(m_data.materials.size()), ModelLimits::materials, u"材质", u"materials");
        at_most(qsizetype(m_data.pictures.size()), ModelLimits::pictures, u"贴图", u"pictures");
        at_most(qsizetype(m_data.actions.size()), ModelLimits::actions, u"动作", u"actions");
        at_most(qsizetype(m_data.sources.size()), ModelLimits::sources, u"附属文件", u"files beside it");
        for (const ModelSource& source : m_data.sources)
            name(source.name);
    }

    void nodes()
    {
        for (std::size_t i = 0; i < m_data.nodes.size(); ++i) {
            const ModelNode& node = m_data.nodes[i];
            name(node.name);
            // A parent that comes first cannot be among the children: there are no loops.
            sound(node.parent >= -1 && node.parent < qint64(i), u"模型的节点层级已损坏",
                  u"the tree of the model's nodes is damaged");
            sound(is_sound(node.place) && is_sound(node.turn) && is_sound(node.scale), u"模型的节点位置已损坏",
                  u"a place of the model's nodes is damaged");
            for (const quint32 mesh : node.meshes)
                sound(mesh < m_data.meshes.size(), u"模型的节点引用了不存在的网格",
                      u"a node of the model shows a mesh that is not there");
        }
    }

    bool is_picture(qint32 number) const { return number >= -1 && number < qint64(m_data.pictures.size()); }

    void materials()
    {
        for (const ModelMaterial& material : m_data.materials) {
            name(material.name);
            sound(is_picture(material.picture) && is_picture(material.normal_map), u"模型的材质引用了不存在的贴图",
                  u"a material of the model shows a picture that is not there");
            bool in_range = material.cutoff >= 0 && material.cutoff <= 1 && material.alpha <= AlphaMode::Blend;
            for (int i = 0; i < 4; ++i)
                in_range = in_range && material.color[i] >= 0 && material.color[i] <= 1;
            sound(in_range, u"模型的材质已损坏", u"a material of the model is damaged");
        }
        qint64 bytes = 0;
        for (const ModelPicture& picture : m_data.pictures) {
            name(picture.name);
            const QSize size = picture.image.size();
            sound(!picture.image.isNull() && picture.image.format() == QImage::Format_RGBA8888
                      && std::max(size.width(), size.height()) <= ModelLimits::picture_side,
                  u"模型的贴图已损坏", u"a picture of the model is damaged");
            bytes += picture.image.sizeInBytes();
        }
        sound(bytes <= ModelLimits::picture_bytes, u"模型的贴图过大", u"the pictures of the model are too large");
    }

    void meshes()
    {
        qsizetype bones = 0;
        for (const ModelMesh& mesh : m_data.meshes) {
            name(mesh.name);
            const std::size_t count = mesh.places.size();
            const auto none_or_all = [&](std::size_t size) { return size == 0 || size == count; };
            sound(mesh.material < m_data.materials.size() && mesh.indices.size() % 3 == 0
                      && mesh.normals.size() == count && none_or_all(mesh.tangents.size())
                      && none_or_all(mesh.uvs.size()) && mesh.bone_numbers.size() == mesh.bone_weights.size()
                      && mesh.bone_numbers.size() == (mesh.bones.empty() ? 0 : count),
                  u"模型的网格不完整", u"a mesh of the model is incomplete");
            sound(std::all_of(mesh.indices.begin(), mesh.indices.end(), [&](quint32 i) { return i < count; }),
                  u"模型的三角形引用了不存在的顶点", u"a triangle of the model has a corner that is not there");
            sound(are_sound<3>(mesh.places) && are_sound<3>(mesh.normals) && are_sound<4>(mesh.tangents)
                      && are_sound<2>(mesh.uvs),
                  u"模型的网格含有无效数值", u"a mesh of the model has numbers that are none");
            at_most(qsizetype(mesh.bones.size()), ModelLimits::mesh_bones, u"单个网格的骨骼", u"bones of one mesh");
            bones += qsizetype(mesh.bones.size());
            skin(mesh);
        }
        at_most(bones, ModelLimits::bones, u"骨骼", u"bones");
    }

    void skin(const ModelMesh& mesh)
    {
        bool holds = std::all_of(mesh.bones.begin(), mesh.bones.end(), [&](const ModelBone& bone) {
            return bone.node < m_data.nodes.size() && is_sound(bone.offset);
        });
        for (const auto& numbers : mesh.bone_numbers)
            for (const quint16 number : numbers)
                holds = holds && number < mesh.bones.size();
        for (const QVector4D& weights : mesh.bone_weights)
            for (int i = 0; i < 4; ++i)
                holds = holds && weights[i] >= 0 && weights[i] <= 1.001f;
        sound(holds, u"模型的骨骼已损坏", u"a bone of the model is damaged");
    }

    void drawn()
    {
        qsizetype triangles = 0;
        qsizetype vertices = 0;
        const auto count = [&](const ModelMesh& mesh) {
            triangles += qsizetype(mesh.indices.size() / 3);
            vertices += qsizetype(mesh.places.size());
        };
        for (const ModelNode& node : m_data.nodes)
            for (const quint32 mesh : node.meshes)
                count(m_data.meshes[mesh]);
        at_most(triangles, ModelLimits::triangles, u"三角形", u"triangles");
        at_most(vertices, ModelLimits::vertices, u"顶点", u"vertices");
    }

    void actions()
    {
        qsizetype tracks = 0;
        for (const ModelAction& action : m_data.actions) {
            name(action.name);
            tracks += qsizetype(action.tracks.size());
            bool holds = is_sound(action.duration) && action.duration >= 0;
            for (const ModelTrack& track : action.tracks)
                holds = holds && track.node < m_data.nodes.size() && is_sound(track.places) && is_sound(track.turns)
                    && is_sound(track.scales);
            sound(holds, u"模型的动作已损坏", u"an action of the model is damaged");
        }
        at_most(tracks, ModelLimits::tracks, u"动作轨道", u"tracks of actions");
    }

    const ModelData& m_data;
};

} // namespace

Status check_model(const ModelData& data)
{
    return ModelCheck(data).run();
}

} // namespace tarn
