#include "dxut_static.h"

using tarn::StaticState;

bool CDXUTStatic::SetText(const QString& text)
{
    return change<&StaticState::text>(text);
}
