#pragma once

#include "page_base/action_rows.h"
#include "page_base/image_rows.h"

namespace tarn {

/// Gives each of the selected controls the size of the first picture that it has in the order of `rows`. Ends with the
/// message `missing` at one that has none which can be shown.
ActionResult size_to_pictures_of(std::span<const ImageRow> rows, CGuiPlugScene& scene,
                                 std::span<ModelObject* const> selected, const QString& missing);

/// The same as a page's action; `missing` answers the message.
template <const auto& rows, QString (*missing)()>
ActionResult size_to_pictures(CGuiPlugScene& scene, std::span<ModelObject* const> selected, ModelObject&)
{
    return size_to_pictures_of(rows, scene, selected, missing());
}

} // namespace tarn
