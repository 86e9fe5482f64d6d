#include "gui_style.h"

#include "core/document.h"
#include "gui_core.h"

CGuiStyle::CGuiStyle(CGuiCore& core, tarn::StatePtr state)
    : ModelObject(core.document(), std::move(state)), m_core(core)
{
}

void CGuiStyle::state_changed()
{
    m_core.look_changed();
}
