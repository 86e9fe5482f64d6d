#pragma once

#include <QString>

class CTimerObject;
class CTVar;

namespace tarn {

/// How lists name what a timebar animates: "Control:Title", in the program's language.
QString target_text(const CTimerObject& object);
/// The variable's name; of one that holds a channel's keys, what the channel is called.
QString variable_text(const CTVar& variable);

} // namespace tarn
