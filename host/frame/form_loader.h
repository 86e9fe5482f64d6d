#pragma once

#include "core/status.h"

#include <QString>

#include <functional>

class QWidget;

namespace tarn {

/// Makes a form's widgets of the classes that the toolkit does not know; null for a class that the maker does not know
/// either.
using WidgetMaker = std::function<QWidget*(const QString& class_name, QWidget* parent)>;

/// The widget tree of a Qt Designer form. The program's own widgets are known; `maker` is asked first.
Result<QWidget*> load_form(const QString& path, QWidget* parent, const WidgetMaker& maker);

} // namespace tarn
