#pragma once

#include <QString>

namespace tarn {

/// The begin of `text`, so that a tool tip shows it as it stands. Qt takes a tip for HTML when it looks like it, and names that an
/// author or a package gave may.
QString plain_tip(const QString& text);

} // namespace tarn
