#include "model.h"

#include "model_pose.h"

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

std::vector<ModelPart> parts_of(const ModelData& data)
{
    std::vector<ModelPart> parts;
    std::vector<char> skinned_seen(data.meshes.size());
    for (std::size_t node = 0; node < data.nodes.size(); ++node)
        for (const quint32 mesh : data.nodes[node].meshes) {
            // A skinned mesh stands where its bones are, however many nodes show it.
            if (!data.meshes[mesh].bones.empty() && std::exchange(skinned_seen[mesh], 1))
                continue;
            parts.push_back({mesh, quint32(node)});
        }
    return parts;
}

std::vector<ModelBox> bone_boxes_of(const ModelMesh& mesh)
{
    std::vector<ModelBox> boxes(mesh.bones.size());
    for (std::size_t i = 0; i < mesh.bone_numbers.size(); ++i)
        for (int link = 0; link < 4; ++link)
            if (mesh.bone_weights[i][link] > 0)
                boxes[mesh.bone_numbers[i][std::size_t(link)]].add(mesh.places[i]);
    return boxes;
}

ModelKind kind_of(const ModelData& data, const std::vector<ModelPart>& parts)
{
    const bool skinned = std::any_of(parts.begin(), parts.end(),
                                     [&](const ModelPart& part) { return !data.meshes[part.mesh].bones.empty(); });
    if (skinned)
        return ModelKind::Skinned;
    const bool moves = std::any_of(data.actions.begin(), data.actions.end(),
                                   [](const ModelAction& action) { return !action.tracks.empty(); });
    return moves ? ModelKind::Animated : ModelKind::Static;
}

} // namespace

Model::Model(ModelData data) : m_data(std::move(data)), m_parts(parts_of(m_data))
{
    m_kind = kind_of(m_data, m_parts);
    for (const ModelMesh& mesh : m_data.meshes) {
        ModelBox& box = m_mesh_boxes.emplace_back();
        for (const QVector3D& place : mesh.places)
            box.add(place);
        m_bone_boxes.push_back(bone_boxes_of(mesh));
    }
    for (const ModelPart& part : m_parts)
        m_triangles += qsizetype(m_data.meshes[part.mesh].indices.size() / 3);
}

Result<ModelPtr> Model::make(ModelData data)
{
    if (auto status = check_model(data); !status)
        return status;
    const std::shared_ptr<Model> model(new Model(std::move(data)));
    model->m_box = ModelPose(model).box();
    return ModelPtr(model);
}

int Model::find_action(const QString& name) const
{
    const auto found = std::find_if(m_data.actions.begin(), m_data.actions.end(),
                                    [&](const ModelAction& action) { return action.name == name; });
    return found == m_data.actions.end() ? -1 : int(found - m_data.actions.begin());
}

} // namespace tarn
