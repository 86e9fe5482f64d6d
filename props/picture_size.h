#pragma once

#include "page_base/action_rows.h"
#include "page_base/image_rows.h"

namespace tarn {

/// Gives each of the selected controls the size of the first picture that it has in the order of `rows`. Ends with a
/// message at one that has none which can be shown.
ActionResult size_to_pictures_of(std::span<const ImageRow> rows, CGuiPlugScene& scene,
                                 std::span<ModelObject* const> selected);

/// The same as a page's action.
template <const auto& rows>
ActionResult size_to_pictures(CGuiPlugScene& scene, std::span<ModelObject* const> selected, ModelObject&)
{
    return size_to_pictures_of(rows, scene, selected);
}

} // namespace tarn
