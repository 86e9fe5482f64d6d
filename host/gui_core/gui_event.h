#pragma once

#include "control_type.h"
#include "core/field_key.h"
#include "core/value.h"

#include <QPointF>
#include <QString>

#include <span>

class CDXUTControl;
class CDXUTDialog;
class CDXUTMenuItem;

/// What happens to controls and dialogs while the interface runs. The numbers are stored with the scene.
enum GuiEventType : quint32 {
    EVENT_BUTTON_CLICKED = 0x101,
    EVENT_BUTTON_MOUSE_ENTERED = 0x102,
    EVENT_BUTTON_MOUSE_LEFT = 0x103,
    EVENT_BUTTON_LEFT_DOWN = 0x104,
    EVENT_BUTTON_LEFT_UP = 0x105,
    EVENT_COMBOBOX_SELECTION_CHANGED = 0x201,
    EVENT_RADIOBUTTON_CLICKED = 0x301,
    EVENT_CHECKBOX_CLICKED = 0x401,
    EVENT_SLIDER_DRAGGED = 0x501,
    EVENT_EDITBOX_ENTER = 0x601,
    EVENT_LISTBOX_DOUBLE_CLICKED = 0x701,
    EVENT_LISTBOX_CLICKED = 0x703,
    EVENT_CHECKBOX_CHECKED = 0x704,
    EVENT_CHECKBOX_UNCHECKED = 0x705,
    EVENT_RADIOBUTTON_CHECKED = 0x706,
    EVENT_RADIOBUTTON_UNCHECKED = 0x707,
    EVENT_SCROLLBAR_CHANGED = 0x708,
    EVENT_DIALOG_MINIMIZED = 0x1101,
    EVENT_DIALOG_RESTORED = 0x1102,
    EVENT_DIALOG_CLOSED = 0x1103,
    EVENT_DIALOG_MOVED = 0x1105,
    EVENT_MAP_HOT_SPOT_SHOWN = 0x1301,
    EVENT_MAP_HOT_SPOT_HIDDEN = 0x1302,
    EVENT_MAP_HINT_CLICKED = 0x1303,
    // Of menus: no script is bound to these, so they are no event kinds.
    EVENT_MENU_OPENS = 0x1401,
    EVENT_MENU_ITEM_CHOSEN = 0x1402,
};

namespace tarn {

/// Something that the user made happen to a control or to a dialog; the other is null. Of menus it is what the menu was
/// opened for, and both can be null.
struct GuiEvent {
    GuiEventType type;
    CDXUTControl* control = nullptr;
    CDXUTDialog* dialog = nullptr;
    Value value = {};                   ///< what the control shows since then; monostate where there is nothing to tell
    CDXUTMenuItem* menu_item = nullptr; ///< that was chosen
    FieldKey menu_field = {};           ///< which attribute names the menu that opens
    QPointF place = {};                 ///< where it opens, pixels of the screen
};

/// What the program knows of an event.
struct EventKind {
    GuiEventType type;
    const char* name; ///< part of the names of scripts, which are stored
    const char16_t* chinese;
    const char16_t* english;
    quint32 control_types; ///< a bit for each type of controls that it happens to; 0: it happens to dialogs
    FieldKey value;        ///< the control's attribute that it tells; default for none
};

std::span<const EventKind> event_kinds();
/// Null for a number that is no event.
const EventKind* event_kind(quint32 type);
/// Whether it happens to controls of that type.
inline bool happens_to(const EventKind& kind, int control_type)
{
    return (kind.control_types >> control_type & 1) != 0;
}
/// The event's name in the program's language; its number when it is none.
QString event_caption(quint32 type);

} // namespace tarn

/// The event's name in the names of scripts; empty for a number that is no event.
QString GetEventStrName(quint32 type);
