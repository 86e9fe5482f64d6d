#pragma once

#include "control_type.h"
#include "core/object_state.h"

#include <QSize>
#include <QString>

#include <memory>
#include <span>

class CDXUTControl;
class CGuiCore;

namespace tarn {

/// What the program knows of a control type. The table is the one place where types are listed.
struct ControlClass {
    using Factory = std::shared_ptr<CDXUTControl> (*)(CGuiCore&, StatePtr);

    int type;
    const char* class_name;
    const char16_t* chinese;
    const char16_t* english;
    const char* name_stem; ///< new controls are named <stem><id>
    QSize default_size;    ///< pixels
    int icon;              ///< number in the icon table
    int create_button;     ///< number, in the control list's form, of the button that creates one
    Factory create;
    ObjectState* (*make_state)(); ///< a fresh one
};

/// All types, by ascending number.
std::span<const ControlClass> control_classes();
/// The row of `type`; null for a number without a type.
const ControlClass* control_class(int type);
/// A fresh state of that type; null for a number without a type.
ObjectState* make_control_state(int type);

} // namespace tarn

/// The type's name in the program's language; empty for a number without a type.
QString GetControlTypeName(int type);
