#pragma once

#include "core/field_key.h"

#include <QtGlobal>

#include <optional>

namespace tarn {

/// Which of the selected objects an edit is written to.
enum class Scope { EverySelected, Current };

/// When an edit is written. OnEnter is for numbers; what is typed and left without Enter is dropped.
enum class Gate { Always, WithFocus, OnEnter };

/// What is shown when the selected objects disagree: that they do, or the current object's value.
enum class Shows { Common, Current };

/// What a write brings with it: a notification code and a redraw of the views, a redraw alone, or nothing.
enum class Follows { Broadcast, Redraw, Nothing };

/// How a numeric edit counts and writes. Its range is that of the field, or a narrower one.
struct NumberLook {
    double step = 1;
    const char* format = "%g"; ///< one printf conversion
    double minimum = -1e9;     ///< more digits would only fill the edit
    double maximum = 1e9;
};

/// One attribute of the selected objects in one control of a page's form. Everything else about it, how the widget
/// shows it and when, comes from the widget's kind and the attribute's field.
struct FieldRow {
    int control;    ///< number of the control in the form
    FieldKey field; ///< the attribute
    Scope scope = Scope::EverySelected;
    Gate gate = Gate::Always;
    Shows shows = Shows::Common;
    Follows follows = Follows::Broadcast;
    /// Rows with the same number other than 0 are written together: an edit of one also gives every selected object what
    /// the current one has of the others, as far as these go to every selected object.
    int together = 0;
    /// For one of several buttons among which the value is chosen: the value that this one stands for.
    std::optional<int> option = {};
    NumberLook number = {};
};

} // namespace tarn
