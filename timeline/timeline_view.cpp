#include "timeline_view.h"

#include "animation/animation_scene.h"

namespace tarn {

CTimebar* TimelineView::bar() const
{
    return scene ? scene->current_bar() : nullptr;
}

} // namespace tarn
