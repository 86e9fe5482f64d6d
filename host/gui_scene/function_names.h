#pragma once

#include <QSet>
#include <QString>

class CConfigScene;

namespace tarn {

class Document;

/// The functions that attributes of the scene's objects name: events, items of menus, keys.
QSet<QString> named_functions(const Document& document);
/// Whether an attribute names the function, or the text of another function has its name in quotes.
bool is_function_used(const CConfigScene& functions, const QString& name);

} // namespace tarn
