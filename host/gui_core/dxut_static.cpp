#include "dxut_static.h"

#include "draw_context.h"

using tarn::StaticState;

CDXUTStatic::CDXUTStatic(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new StaticState) {}

CDXUTStatic::CDXUTStatic(tarn::Journal& journal, CGuiCore& core, StaticState* state)
    : CDXUTControl(journal, core, state)
{
}

bool CDXUTStatic::SetText(const QString& text)
{
    return change<StaticState>(&StaticState::text, text);
}

void CDXUTStatic::draw(tarn::DrawContext& context, const QRectF& area) const
{
    draw_text(context, area);
}

void CDXUTStatic::draw_text(tarn::DrawContext& context, const QRectF& area) const
{
    const auto& s = state<StaticState>();
    if (s.text.isEmpty())
        return;
    m_text.draw(context.painter, area, s.text,
                {.color = tarn::Skin::text_color(visual_state(), s.text_color),
                 .font_size = s.font_size ? s.font_size : tarn::Skin::font_size,
                 .bold = s.bold,
                 .horizontal_align = s.horizontal_align,
                 .vertical_align = s.vertical_align,
                 .word_wrap = s.word_wrap,
                 .shadow = s.shadow});
}

void CDXUTStatic::state_changed()
{
    m_text.invalidate();
    CDXUTControl::state_changed();
}
