#pragma once

#include "dxut_static.h"

class CDXUTPicture : public CDXUTStatic {
public:
    using CDXUTStatic::CDXUTStatic;

    /// Name of a picture among the scene's textures; empty for none.
    const QString& image() const { return state<tarn::PictureState>().image; }
};
