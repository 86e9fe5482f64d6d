#pragma once

#include "field_row.h"

#include <QStringList>

namespace tarn {

/// The system's families that an author can choose, without those of the scene's package.
QStringList system_font_families(CGuiPlugScene& scene);
/// Those that the package's fonts have.
QStringList package_font_families(CGuiPlugScene& scene);
/// What can be chosen for one object instead of the style's font.
std::vector<ChoiceItem> font_choices(CGuiPlugScene& scene, const ModelObject& object);

} // namespace tarn
