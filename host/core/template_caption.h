#pragma once

#include <QString>

class QObject;

namespace tarn {

/// A caption (text, title, tool tip) that CTarnLanguageConvert translated, as its template has it; empty when it was not
/// translated.
QString template_caption(const QObject& object, const char* property);

} // namespace tarn
