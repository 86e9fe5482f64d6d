#pragma once

#include "gui_core/anchor.h"
#include "page_base/field_row.h"

#include <array>

namespace tarn {

/// The nine buttons for the anchors, which have the same numbers on every page.
constexpr std::array<FieldRow, 9> anchor_rows(FieldKey field, Scope scope, Follows follows)
{
    // By the anchors' numbers, which run clockwise from the top left and end with the centre.
    constexpr std::array controls{6469, 6474, 6480, 6491, 6502, 6499, 6496, 6485, 6488};
    std::array<FieldRow, 9> rows{};
    for (int anchor = anchor_top_left; anchor <= anchor_centre; ++anchor)
        rows[std::size_t(anchor)] = {.control = controls[std::size_t(anchor)],
                                     .field = field,
                                     .scope = scope,
                                     .follows = follows,
                                     .option = anchor};
    return rows;
}

/// Icon of an anchor's button in the program's icon table.
constexpr int anchor_icon(int anchor)
{
    return 30 + anchor;
}

} // namespace tarn
