#pragma once

#include "gui_core/control_state.h"
#include "gui_core/gui_event.h"
#include "page_base/field_row.h"
#include "page_base/script_rows.h"

#include <array>

namespace tarn {

/// A row of a page for one type of controls: it shows the current control and writes to all selected ones of the type.
constexpr FieldRow type_row(int control, FieldKey field)
{
    return {.control = control, .field = field, .shows = Shows::Current, .follows = Follows::Redraw};
}

/// The caption has the same number on every page.
constexpr FieldRow caption_row{.control = 6352,
                               .field = key<&StaticState::text>,
                               .shows = Shows::Current,
                               .follows = Follows::Redraw,
                               .reset = Default::None};

/// So have the buttons of the scripts, in the order of the page's events.
template <std::size_t count>
constexpr std::array<ScriptRow, count> script_rows(const GuiEventType (&events)[count])
{
    constexpr std::array script_buttons{6520, 6418, 6426, 6432, 6433};
    constexpr std::array remove_buttons{6096, 6095, 6524, 6435, 6436};
    static_assert(count <= script_buttons.size());
    std::array<ScriptRow, count> rows{};
    for (std::size_t i = 0; i < count; ++i)
        rows[i] = {events[i], script_buttons[i], remove_buttons[i]};
    return rows;
}

} // namespace tarn
