#pragma once

#include <QStringList>

class CGuiPlugScene;

namespace tarn {

class FieldBase;
class ModelObject;

/// Where an attribute of an object has its value from, a line each in the program's language: the value that is shown, what
/// makes it that, and what would be shown without that; the default at last.
QStringList value_sources(CGuiPlugScene& scene, const ModelObject& object, const FieldBase& field);

} // namespace tarn
