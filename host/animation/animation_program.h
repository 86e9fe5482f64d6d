#pragma once

#include "animation_states.h"

#include <QHash>

#include <vector>

class CAnimationScene;
class CTimebar;
class CTimerObject;

namespace tarn {

/// A timebar made ready for evaluation: flat lists of objects and of their tracks, each of which remembers the span that it
/// is in. Showing a frame allocates nothing.
class AnimationProgram {
public:
    using Covered = QHash<quint32, quint32>; ///< channels by the ids of objects

    AnimationProgram() = default;
    /// Leaves out what `covered` holds, which higher bars drive, and adds to it what this one drives.
    AnimationProgram(const CTimebar& bar, Covered& covered);
    /// Of one object, as if nothing else drove it.
    explicit AnimationProgram(const CTimerObject& object);

    /// What was not recorded goes before the keys.
    void show(float time, const QMap<quint32, Pose>& unrecorded);
    quint32 channels_of(quint32 object) const { return m_channels.value(object); }
    bool follows(const ModelObject& path) const;
    /// What the keys say, without what was not recorded.
    Pose pose_at(quint32 object, float time);

private:
    struct Track {
        float begin = 0; ///< of the span, seconds; empty at first
        float end = 0;
        float scale = 0; ///< 1 / its length
        float bend = 0;
        float base[3] = {};
        float delta[3] = {};
        quint32 from = 0; ///< of colours and whole numbers
        quint32 to = 0;
        VarType type = VarType::Float;
        bool steps = false;
        quint8 word = 0; ///< in a pose
        bool moves = false;
    };
    struct Object {
        AnimationTarget* kind;
        ModelObject* target;
        std::size_t end;                   ///< of its tracks
        quint32 channels;                  ///< that have tracks
        const ModelObject* path = nullptr; ///< that it follows; null for none
        bool along_path = false;
    };

    void add(const CTimerObject& object, AnimationTarget& kind, ModelObject& target, Covered& covered);
    static float time_in_span(const Track& track, float time);
    void enter_span(std::size_t track, float time);
    void evaluate(std::size_t begin, const Object& object, float time, Pose& pose);

    std::vector<Track> m_tracks;
    std::vector<KeyTrack> m_keys; ///< of the tracks
    std::vector<Object> m_objects;
    QHash<quint32, quint32> m_channels;
};

} // namespace tarn
