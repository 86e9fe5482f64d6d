#pragma once

#include <QPainterPath>

namespace tarn {

enum class TimerObjectType : quint8;

/// The outline of the small picture of a kind of timer object, in a square of 12 pixels.
QPainterPath type_icon(TimerObjectType type);

} // namespace tarn
