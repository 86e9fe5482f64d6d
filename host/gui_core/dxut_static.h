#pragma once

#include "dxut_control.h"
#include "text_cache.h"

/// The static text; the base of the types that show a text.
class CDXUTStatic : public CDXUTControl {
public:
    CDXUTStatic(tarn::Journal& journal, CGuiCore& core);

    const QString& text() const { return state<tarn::StaticState>().text; }
    bool SetText(const QString& text);

    void draw(tarn::DrawContext& context, const QRectF& area) const override;

protected:
    CDXUTStatic(tarn::Journal& journal, CGuiCore& core, tarn::StaticState* state);
    void draw_text(tarn::DrawContext& context, const QRectF& area) const;
    tarn::TextLook text_look() const;

private:
    mutable tarn::TextCache m_text;
};
