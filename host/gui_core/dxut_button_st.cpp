#include "dxut_button_st.h"

#include <array>

using tarn::ImageButtonState;

namespace {

constexpr std::array image_slots{&ImageButtonState::image_normal, &ImageButtonState::image_hover,
                                 &ImageButtonState::image_pressed};

bool is_slot(int slot)
{
    return slot >= 0 && slot < int(image_slots.size());
}

} // namespace

CDXUTButtonST::CDXUTButtonST(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new ImageButtonState)
{
}

QString CDXUTButtonST::image(int slot) const
{
    return is_slot(slot) ? state<ImageButtonState>().*image_slots[std::size_t(slot)] : QString();
}
