#pragma once

#include "model_library.h"
#include "models/model_pick.h"

namespace tarn {

class WorldObject;

/// The models of the world's objects, posed as these are shown.
class WorldModels {
public:
    explicit WorldModels(Document& document) : m_library(document) {}

    ModelLibrary& library() { return m_library; }

    /// How the object's model stands now; null for an object without one, and while it is being read. It lasts as
    /// long as the object keeps its model.
    const ModelPose* pose(const WorldObject& object);
    /// In the object's own coordinates; empty where there is no pose.
    ModelBox box(const WorldObject& object);
    /// None when the ray, in the world, misses the object's model or panel. A panel's places are 0 to 1 from its top left.
    std::optional<ModelHit> pick(const WorldObject& object, const Ray& ray);

    /// Seconds for which the interface runs: what plays by itself is so far on.
    void set_clock(double seconds) { m_clock = seconds; }
    /// Whether the object looks different when the clock goes on.
    bool moves(const WorldObject& object);

private:
    struct Posed {
        ModelPose pose;
        int action = -1;
        double time = 0;
        bool repeats = true;
    };

    ModelLibrary m_library;
    std::map<quint32, Posed> m_posed; ///< by the objects' ids
    double m_clock = 0;
};

} // namespace tarn
