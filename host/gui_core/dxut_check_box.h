#pragma once

#include "dxut_static.h"

class CDXUTCheckBox : public CDXUTStatic {
public:
    CDXUTCheckBox(tarn::Journal& journal, CGuiCore& core);

    bool GetChecked() const { return state<tarn::CheckBoxState>().checked; }
    bool SetChecked(bool checked);

    void draw(tarn::DrawContext& context, const QRectF& area) const override;
    bool is_interactive() const override { return true; }
    void clicked() override;

protected:
    CDXUTCheckBox(tarn::Journal& journal, CGuiCore& core, tarn::CheckBoxState* state);
    void draw_box(tarn::DrawContext& context, const QRectF& area, tarn::Element box, tarn::Element mark) const;
};
