#pragma once

#include "dxut_static.h"

class CDXUTPicture : public CDXUTStatic {
public:
    CDXUTPicture(tarn::Journal& journal, CGuiCore& core);

    const QString& image() const { return state<tarn::PictureState>().image; }
    /// `name` of a picture among the scene's textures; empty for none.
    bool set_image(const QString& name);
};
