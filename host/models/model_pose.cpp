#include "model_pose.h"

#include <algorithm>
#include <atomic>
#include <cmath>

namespace tarn {

namespace {

/// The key before `time` and how far it is to the next, 0 to 1.
struct Spot {
    std::size_t key;
    float share;
};

Spot find_spot(const std::vector<float>& times, float time)
{
    const auto next = std::upper_bound(times.begin(), times.end(), time);
    if (next == times.begin())
        return {0, 0};
    const auto key = std::size_t(next - times.begin()) - 1;
    if (next == times.end())
        return {key, 0};
    return {key, (time - times[key]) / (times[key + 1] - times[key])};
}

QVector3D between(const QVector3D& a, const QVector3D& b, float share)
{
    return a + (b - a) * share;
}

QQuaternion between(const QQuaternion& a, const QQuaternion& b, float share)
{
    return QQuaternion::nlerp(a.normalized(), b.normalized(), share);
}

template <class T>
T value_at(const ModelKeys<T>& keys, float time, const T& at_rest)
{
    if (keys.times.empty())
        return at_rest;
    const Spot spot = find_spot(keys.times, time);
    const std::size_t next = std::min(spot.key + 1, keys.values.size() - 1);
    return between(keys.values[spot.key], keys.values[next], spot.share);
}

QMatrix4x4 composed(const QVector3D& place, const QQuaternion& turn, const QVector3D& scale)
{
    const QMatrix3x3 r = turn.normalized().toRotationMatrix();
    return QMatrix4x4(r(0, 0) * scale.x(), r(0, 1) * scale.y(), r(0, 2) * scale.z(), place.x(), //
                      r(1, 0) * scale.x(), r(1, 1) * scale.y(), r(1, 2) * scale.z(), place.y(), //
                      r(2, 0) * scale.x(), r(2, 1) * scale.y(), r(2, 2) * scale.z(), place.z(), //
                      0, 0, 0, 1);
}

float wrapped(double seconds, float duration, ActionEnd end)
{
    if (!(duration > 0) || !std::isfinite(seconds))
        return 0;
    if (end == ActionEnd::Hold)
        return float(std::clamp(seconds, 0.0, double(duration)));
    const double rest = std::fmod(seconds, double(duration));
    return float(rest < 0 ? rest + duration : rest);
}

quint64 next_revision()
{
    static std::atomic<quint64> last = 0;
    return ++last;
}

} // namespace

ModelPose::ModelPose(ModelPtr model) : m_model(std::move(model))
{
    for (const ModelMesh& mesh : m_model->data().meshes) {
        m_first_bone.push_back(m_bones.size());
        m_bones.resize(m_bones.size() + mesh.bones.size());
    }
    m_first_bone.push_back(m_bones.size());
    m_nodes.resize(m_model->data().nodes.size());
    update();
}

void ModelPose::set_action(int action, double seconds, ActionEnd end)
{
    const auto& actions = m_model->data().actions;
    const bool known = action >= 0 && std::size_t(action) < actions.size();
    const float time = known ? wrapped(seconds, actions[std::size_t(action)].duration, end) : 0;
    if (m_action == (known ? action : -1) && m_time == time)
        return;
    m_action = known ? action : -1;
    m_time = time;
    update();
}

void ModelPose::update()
{
    const ModelData& data = m_model->data();
    for (std::size_t i = 0; i < data.nodes.size(); ++i)
        m_nodes[i] = composed(data.nodes[i].place, data.nodes[i].turn, data.nodes[i].scale);
    if (m_action >= 0)
        for (const ModelTrack& track : data.actions[std::size_t(m_action)].tracks) {
            const ModelNode& node = data.nodes[track.node];
            m_nodes[track.node] = composed(value_at(track.places, m_time, node.place),
                                           value_at(track.turns, m_time, node.turn),
                                           value_at(track.scales, m_time, node.scale));
        }
    for (std::size_t i = 0; i < data.nodes.size(); ++i)
        if (data.nodes[i].parent >= 0)
            m_nodes[i] = m_nodes[std::size_t(data.nodes[i].parent)] * m_nodes[i];
    std::size_t bone = 0;
    for (const ModelMesh& mesh : data.meshes)
        for (const ModelBone& link : mesh.bones)
            m_bones[bone++] = m_nodes[link.node] * link.offset;
    m_revision = next_revision();
}

std::span<const QMatrix4x4> ModelPose::bones(std::size_t mesh) const
{
    return {m_bones.data() + m_first_bone[mesh], m_first_bone[mesh + 1] - m_first_bone[mesh]};
}

QMatrix4x4 ModelPose::matrix(const ModelPart& part) const
{
    return bones(part.mesh).empty() ? m_nodes[part.node] : QMatrix4x4();
}

ModelBox ModelPose::box(const ModelPart& part) const
{
    const auto matrices = bones(part.mesh);
    if (matrices.empty())
        return m_model->mesh_box(part.mesh).moved(m_nodes[part.node]);
    // A vertex lies between the places where its bones alone would put it, so within the boxes of these.
    ModelBox box;
    for (std::size_t i = 0; i < matrices.size(); ++i)
        box.add(m_model->bone_boxes(part.mesh)[i].moved(matrices[i]));
    return box;
}

ModelBox ModelPose::box() const
{
    ModelBox all;
    for (const ModelPart& part : m_model->parts())
        all.add(box(part));
    return all;
}

void ModelPose::places(const ModelPart& part, std::vector<QVector3D>& out) const
{
    const ModelMesh& mesh = m_model->data().meshes[part.mesh];
    out.resize(mesh.places.size());
    const auto matrices = bones(part.mesh);
    if (matrices.empty()) {
        const QMatrix4x4& node = m_nodes[part.node];
        std::transform(mesh.places.begin(), mesh.places.end(), out.begin(),
                       [&](const QVector3D& place) { return node.map(place); });
        return;
    }
    for (std::size_t i = 0; i < out.size(); ++i) {
        QVector3D sum;
        for (int link = 0; link < 4; ++link)
            if (const float weight = mesh.bone_weights[i][link]; weight > 0)
                sum += weight * matrices[mesh.bone_numbers[i][std::size_t(link)]].map(mesh.places[i]);
        out[i] = sum;
    }
}

} // namespace tarn
