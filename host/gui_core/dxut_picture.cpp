#include "dxut_picture.h"

#include "gui_core.h"

CDXUTPicture::CDXUTPicture(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new tarn::PictureState)
{
}
