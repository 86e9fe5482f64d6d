#pragma once

#include "model.h"

#include <span>

namespace tarn {

/// What an action does when its time is over.
enum class ActionEnd { Hold, Repeat };

/// A model's nodes and bones at one time of an action.
class ModelPose {
public:
    /// At rest.
    explicit ModelPose(ModelPtr model);

    /// `action` is a number in the model's list; one that is not there poses the model at rest. `seconds` before the
    /// action's beginning count from its end when it repeats.
    void set_action(int action, double seconds, ActionEnd end = ActionEnd::Repeat);

    const ModelPtr& model() const { return m_model; }
    /// From each node's space into the model's.
    const std::vector<QMatrix4x4>& nodes() const { return m_nodes; }
    /// From the mesh's space at rest into the model's, for each bone; empty for a mesh without any.
    std::span<const QMatrix4x4> bones(std::size_t mesh) const;
    /// From the part's vertices into the model's space; the identity for a skinned part, whose bones do that.
    QMatrix4x4 matrix(const ModelPart& part) const;
    /// Encloses the posed part, in the model's space.
    ModelBox box(const ModelPart& part) const;
    ModelBox box() const;
    /// The places of the posed part's vertices, in the model's space.
    void places(const ModelPart& part, std::vector<QVector3D>& out) const;

    /// Differs between any two poses that were set, also of different models; copies share it.
    quint64 revision() const { return m_revision; }

private:
    void update();

    ModelPtr m_model;
    std::vector<QMatrix4x4> m_nodes;
    std::vector<QMatrix4x4> m_bones;       ///< of all meshes, one after the other
    std::vector<std::size_t> m_first_bone; ///< of each mesh in m_bones, and where the last one ends
    int m_action = -1;
    float m_time = 0;
    quint64 m_revision = 0;
};

} // namespace tarn
