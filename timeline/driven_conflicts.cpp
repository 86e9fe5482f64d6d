#include "driven_conflicts.h"

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"

#include <algorithm>

namespace tarn {

DrivenConflicts::DrivenConflicts(const CAnimationScene* scene)
{
    if (!scene || scene->bars().size() < 2)
        return;
    for (int place = 0; const CTimebar* bar : scene->bars()) {
        for (const CTimerObject* object : bar->objects())
            if (object->type() != TimerObjectType::Script)
                m_uses[object->target().id].push_back({place, object});
        ++place;
    }
}

std::vector<DrivenSpan> DrivenConflicts::of(const CTVar& variable) const
{
    std::vector<DrivenSpan> spans;
    const CTimerObject* object = variable.object();
    const auto channel = variable.channel();
    const auto uses = m_uses.constFind(object->target().id);
    if (!channel || !object->is_on(*channel) || variable.keys().is_empty() || uses == m_uses.constEnd())
        return spans;
    const auto own = std::find_if(uses->begin(), uses->end(), [=](const Use& use) { return use.object == object; });
    if (own == uses->end())
        return spans;
    const float length = object->timebar()->get_total_length();
    for (const Use& use : *uses) {
        const CTVar* rival = use.place == own->place ? nullptr : use.object->channel_variable(*channel);
        if (!rival || !use.object->is_on(*channel) || rival->keys().is_empty())
            continue;
        const CTimebar* other = use.object->timebar();
        spans.push_back({std::min(length, other->get_total_length()), other, use.place < own->place});
    }
    return spans;
}

std::vector<DrivenSpan> DrivenConflicts::of(const CTimerObject& object) const
{
    std::vector<DrivenSpan> spans;
    if (m_uses.isEmpty() || m_uses.value(object.target().id).size() < 2)
        return spans;
    for (const CTVar* variable : object.variables()) {
        const std::vector<DrivenSpan> some = of(*variable);
        spans.insert(spans.end(), some.begin(), some.end());
    }
    return spans;
}

} // namespace tarn
