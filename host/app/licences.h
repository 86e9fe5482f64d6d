#pragma once

#include <QString>

namespace tarn {

/// What the program uses of others and under which licences, a line for each, with what that means for passing it on; from
/// the file that its package installs.
QString licences_text();

} // namespace tarn
