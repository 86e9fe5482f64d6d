#pragma once

#include "core/field_key.h"
#include "core/value.h"

#include <optional>
#include <vector>

class CGuiPlugScene;
class filter_man;

namespace tarn {

class ModelObject;
class Target;

/// Which of the selected objects an edit is written to.
enum class Scope { EverySelected, Current };

/// When an edit is written. OnEnter is for numbers; what is typed and left without Enter is dropped.
enum class Gate { Always, WithFocus, OnEnter };

/// What is shown when the selected objects disagree: that they do, or the current object's value and a mark beside it.
enum class Shows { Common, Current };

/// What a write brings with it: a notification code and a redraw of the views, a redraw alone, or nothing.
enum class Follows { Broadcast, Redraw, Nothing };

/// Whether the attribute has a default that an author may want back: places and names have none.
enum class Default { Offered, None };

/// How a numeric edit counts and writes. Its range is that of the field, or a narrower one.
struct NumberLook {
    double step = 1;
    const char* format = "%g"; ///< one printf conversion
    double minimum = -1e9;     ///< more digits would only fill the edit
    double maximum = 1e9;
};

/// What a row shows of its value.
struct Part {
    enum class Of {
        Whole,
        Item,    ///< one place of a list: of a vector, a matrix, a list by states
        Channel, ///< one of the four bytes of a colour
        Entry    ///< what a map has under one name
    };
    Of of = Of::Whole;
    int index = 0; ///< of an item from 0, or -1 for none: nothing can be edited then; of a channel its lowest bit
    const char* name = ""; ///< of an entry; has to stay. An empty one for none

    constexpr bool is_none() const { return (of == Of::Item && index < 0) || (of == Of::Entry && !*name); }
};

constexpr Part item(int index)
{
    return {.of = Part::Of::Item, .index = index};
}
constexpr Part channel(int lowest_bit)
{
    return {.of = Part::Of::Channel, .index = lowest_bit};
}

constexpr Part entry(const char* name)
{
    return {.of = Part::Of::Entry, .name = name};
}

/// For values that are shown otherwise than they are stored. `part` is the row's.
struct Conversion {
    Value (*shown)(const ModelObject& object, const Value& stored, Part part) = nullptr; ///< null: as it is
    Value (*stored)(const ModelObject& object, const Value& shown, Part part) = nullptr;
    /// The printf conversion for now, instead of the NumberLook's.
    const char* (*format)() = nullptr;
};

/// An inclusive range of numbers.
struct Limits {
    double minimum;
    double maximum;
};

struct ChoiceItem {
    Value value;
    QString text;
    bool operator==(const ChoiceItem&) const = default;
};

/// What can be chosen for `object`: the scene's objects, its functions, fonts...
using Choices = std::vector<ChoiceItem> (*)(CGuiPlugScene& scene, const ModelObject& object);

/// The controls beside a list of texts. 0: the form has none.
struct ListControls {
    int edit = 0; ///< shows the chosen text and changes it
    int add = 0;
    int remove = 0;
    int up = 0; ///< moves the chosen text before the one above it
    int down = 0;
    int paste = 0;                   ///< adds the lines of the clipboard behind the chosen text
    QString (*new_text)() = nullptr; ///< what is added; null: an empty text
    FieldKey chosen = {};            ///< attribute that is the index of the chosen text; none: the page's own matter
};

/// One attribute of the selected objects in one control of a page's form. Everything else about it, how the widget
/// shows it and when, comes from the widget's kind and the attribute's field.
struct FieldRow {
    int control;    ///< number of the control in the form
    FieldKey field; ///< which attribute
    Scope scope = Scope::EverySelected;
    Gate gate = Gate::Always;
    Shows shows = Shows::Common;
    Follows follows = Follows::Broadcast;
    Default reset = Default::Offered;
    /// Rows with the same number other than 0 are written together: an edit of one also gives every selected object what
    /// the current one has of the others, as far as these go to every selected object.
    int together = 0;
    /// For one of several buttons among which the value is chosen: the value that this one stands for.
    std::optional<int> option = {};
    NumberLook number = {};
    Part part = {};
    Conversion conversion = {};
    /// The range of a number as the current object has it, within the field's.
    Limits (*limits)(const ModelObject& current) = nullptr;
    /// Why `object` may not have that value; an empty text when it may. A veto for one object is one for all.
    QString (*veto)(const ModelObject& object, const Value& value) = nullptr;
    /// Whether the current object can be edited here; null: always.
    bool (*enabled_if)(const ModelObject& current) = nullptr;
    /// For a combo box whose entries stand for values of any kind; null: they stand for 0, 1, 2...
    Choices choices = nullptr;
    ListControls list = {};
    quint32 blank_color = 0; ///< ARGB; what the picker begins with where 0 means that no colour is chosen
    /// For the edit of a path or URL: the button that opens a file dialog, and what that offers. 0 for none.
    int opener = 0;
    filter_man (*files)() = nullptr;
    /// What the row shows and edits where that is not the page's target; the page's codes hold for it, too.
    const Target* target = nullptr;
};

} // namespace tarn
