#pragma once

#include "script/script_api.h"

#include <QList>
#include <QString>

#include <vector>

namespace tarn {

/// A call like `dialog("Settings")` that asks for an object by a name written out.
struct NameInScript {
    QString kind; ///< the function that is called
    QString name;
    int line; ///< from 1
};

/// Those of a function's text, comments left out; `kinds` are the functions that find objects.
QList<NameInScript> names_in_script(const QString& text, const std::vector<ScriptObjects::Kind>& kinds);

} // namespace tarn
