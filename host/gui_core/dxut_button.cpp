#include "dxut_button.h"

CDXUTButton::CDXUTButton(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new tarn::ButtonState) {}
