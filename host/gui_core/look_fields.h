#pragma once

#include "control_state.h"
#include "core/field_key.h"

#include <array>

namespace tarn {

/// The attributes that make a look of a control's own, in place of the style's.
inline constexpr std::array look_fields{key<&ControlExtras::style_images>,      key<&ControlExtras::style_colors>,
                                        key<&ControlExtras::style_text_colors>, key<&ControlExtras::font_family>,
                                        key<&ControlExtras::font_italic>,       key<&StaticState::text_color>,
                                        key<&StaticState::font_size>,           key<&StaticState::bold>};

} // namespace tarn
