#include "dxut_static.h"

using tarn::StaticState;

CDXUTStatic::CDXUTStatic(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new StaticState) {}

CDXUTStatic::CDXUTStatic(tarn::Journal& journal, CGuiCore& core, StaticState* state)
    : CDXUTControl(journal, core, state)
{
}

bool CDXUTStatic::SetText(const QString& text)
{
    return change<&StaticState::text>(text);
}
