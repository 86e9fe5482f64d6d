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
    return change<&StaticState::text>(text);
}

void CDXUTStatic::draw(tarn::DrawContext& context, const QRectF& area) const
{
    draw_text(context, area);
}

void CDXUTStatic::draw_text(tarn::DrawContext& context, const QRectF& area) const
{
    if (!text().isEmpty())
        m_text.draw(context.painter, area, text(), text_look());
}

tarn::TextLook CDXUTStatic::text_look() const
{
    const auto& s = state<StaticState>();
    return {.color = text_color_in(visual_state(), s.text_color),
            .font_size = s.font_size ? s.font_size : tarn::Skin::font_size,
            .bold = s.bold,
            .horizontal_align = s.horizontal_align,
            .vertical_align = s.vertical_align,
            .word_wrap = s.word_wrap,
            .shadow = s.shadow,
            .family = font_family(),
            .italic = font_italic()};
}
