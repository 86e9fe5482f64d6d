#pragma once

#include "gui_core/control_state.h"
#include "page_base/image_rows.h"
#include "type_rows.h"

namespace tarn {

// What the pages of check boxes and radio buttons have in common.

constexpr FieldRow checked_row = type_row(6378, key<&CheckBoxState::checked>);

constexpr ImageRow check_images[] = {
    {6160, 6557, key<&CheckBoxState::image_unchecked>},
    {6556, 6165, key<&CheckBoxState::image_checked>},
};

constexpr int id_check_size = 6166;

} // namespace tarn
