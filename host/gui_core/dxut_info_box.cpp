#include "dxut_info_box.h"

#include "core/field.h"
#include "draw_context.h"
#include "gui_core.h"

#include <algorithm>
#include <cmath>

using tarn::InfoBoxState;

namespace {

constexpr double margin = 8; ///< pixels between the panel and the lines

} // namespace

CDXUTInfoBox::CDXUTInfoBox(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new InfoBoxState) {}

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

void CDXUTInfoBox::state_changed()
{
    m_texts.clear();
    CDXUTStatic::state_changed();
}

int CDXUTInfoBox::seen_lines() const
{
    return std::max(0, int((rect().height() - 2 * margin) / state<InfoBoxState>().line_height));
}

void CDXUTInfoBox::draw(tarn::DrawContext& context, const QRectF& area) const
{
    const auto& s = state<InfoBoxState>();
    context.draw_element(tarn::Element::InfoPanel, tarn::VisualState::Normal, area);
    const int end = std::max(0, int(s.lines.size()) - m_back);
    const int begin = std::max(0, end - seen_lines());
    m_texts.resize(std::size_t(end - begin));
    tarn::TextLook look = text_look();
    look.vertical_align = 1;
    look.word_wrap = false;
    for (int i = begin; i < end; ++i) {
        const QRectF place(area.x() + margin, area.y() + margin + (i - begin) * s.line_height,
                           area.width() - 2 * margin, s.line_height);
        m_texts[std::size_t(i - begin)].draw(context.painter, place, s.lines[i], look);
    }
}

bool CDXUTInfoBox::wheel_turned(double steps)
{
    const int most = std::max(0, int(lines().size()) - seen_lines());
    m_back = std::clamp(m_back + int(std::lround(steps)), 0, most);
    m_texts.clear();
    redraw();
    return true;
}
