#pragma once

#include "field_row.h"

namespace tarn {

/// The value as a T; a fresh one when it is of another kind.
template <class T>
T value_as(const Value& value)
{
    const T* held = std::get_if<T>(&value);
    return held ? *held : T();
}

/// A number, flag or reference as a number; 0 for other kinds.
double number_of(const Value& value);

/// That part of a value. Where a list or map has nothing stand empty texts and zeros.
Value part_of(const Value& value, Part part);
/// `value` with `content` in the place of that part; a list grows as far as it must.
Value with_part(Value value, Part part, const Value& content);

} // namespace tarn
