#include "gui_style.h"

#include "core/document.h"
#include "core/model_changes.h"
#include "gui_core.h"

#include <algorithm>

bool tarn::changes_looks(const ModelChange& change)
{
    return change.everything || change.is_of(key<&CoreState::scene_style>)
        || change.is_of(key<&CoreState::animation_speed>)
        || std::any_of(change.objects.begin(), change.objects.end(), [](const ModelChange::Object& changed) {
               return dynamic_cast<const CGuiStyle*>(changed.object);
           });
}

CGuiStyle::CGuiStyle(CGuiCore& core, tarn::StatePtr state)
    : ModelObject(core.document(), std::move(state)), m_core(core)
{
}

void CGuiStyle::state_changed()
{
    m_core.look_changed();
}
