#include "dxut_picture.h"

#include "gui_core.h"

CDXUTPicture::CDXUTPicture(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new tarn::PictureState)
{
}

bool CDXUTPicture::set_image(const QString& name)
{
    return change<tarn::PictureState>(&tarn::PictureState::image, name);
}
