#include "dxut_info_box.h"

#include "core/field.h"
#include "gui_core.h"

#include <algorithm>
#include <cmath>

using tarn::InfoBoxState;

void CDXUTInfoBox::AddString(const QString& text)
{
    m_back = 0;
    edit<InfoBoxState>().lines.append(tarn::cut_text(text, InfoBoxState::max_line_length));
    written(tarn::key<&InfoBoxState::lines>);
}

void CDXUTInfoBox::reset_run_state()
{
    m_back = 0;
    state_changed();
}

int CDXUTInfoBox::seen_lines() const
{
    return std::max(0, int((rect().height() - 2 * margin) / state<InfoBoxState>().line_height));
}

bool CDXUTInfoBox::wheel_turned(double steps)
{
    const int most = std::max(0, int(lines().size()) - seen_lines());
    m_back = std::clamp(m_back + int(std::lround(steps)), 0, most);
    redraw();
    return true;
}
