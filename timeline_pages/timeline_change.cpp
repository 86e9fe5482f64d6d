#include "timeline_change.h"

#include "animation/animation_scene.h"
#include "core/field.h"

#include <algorithm>

namespace tarn {

bool is_of_timeline(const ModelChange& change, const CAnimationScene& scene)
{
    const char* part = scene.bar_kind().part;
    const auto is_of = [part](const ModelChange::Object& changed) {
        if (changed.object->kind() && changed.object->kind()->part == part)
            return true;
        const FieldBase* name = changed.object->fields().find("name");
        return name && changed.changed(name->key());
    };
    return change.is_of_structure() || std::any_of(change.objects.begin(), change.objects.end(), is_of);
}

} // namespace tarn
