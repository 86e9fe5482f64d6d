#include "dxut_info_box.h"

#include "core/field.h"
#include "gui_core.h"

#include <algorithm>
#include <cmath>

using tarn::InfoBoxState;

CDXUTInfoBox::CDXUTInfoBox(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new InfoBoxState) {}

void CDXUTInfoBox::AddString(const QString& text)
{
    auto& s = edit<InfoBoxState>();
    s.lines.append(tarn::cut_text(text, InfoBoxState::max_line_length));
    if (s.lines.size() > s.max_lines)
        s.lines.remove(0, s.lines.size() - s.max_lines);
    m_back = 0;
    written();
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
