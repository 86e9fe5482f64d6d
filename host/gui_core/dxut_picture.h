#pragma once

#include "dxut_static.h"

class CDXUTPicture : public CDXUTStatic {
public:
    CDXUTPicture(tarn::Journal& journal, CGuiCore& core);

    /// Name of a picture among the scene\'s textures; empty for none.
    const QString& image() const { return state<tarn::PictureState>().image; }

    void draw(tarn::DrawContext& context, const QRectF& area) const override;
};
