#pragma once

#include <QString>

namespace tarn {

struct ScriptError;

/// What is wrong, for a log of the one function that is edited: without its name.
QString fault_text(const ScriptError& fault);

} // namespace tarn
