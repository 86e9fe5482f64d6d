#pragma once

#include <QHash>

#include <vector>

class CAnimationScene;
class CTimebar;
class CTimerObject;
class CTVar;

namespace tarn {

/// Another timebar that, played together with this one, drives the same channel of the same object: as long as both last.
struct DrivenSpan {
    float end = 0;
    const CTimebar* other = nullptr;
    bool other_wins = false;
};

class DrivenConflicts {
public:
    /// Of the scene's timebars as they are now; null has none.
    explicit DrivenConflicts(const CAnimationScene* scene);

    std::vector<DrivenSpan> of(const CTVar& variable) const;
    /// Of all its channels.
    std::vector<DrivenSpan> of(const CTimerObject& object) const;

private:
    struct Use {
        int place; ///< of the timebar in the list
        const CTimerObject* object;
    };
    QHash<quint32, std::vector<Use>> m_uses; ///< by the ids of what is animated; only with several timebars
};

} // namespace tarn
