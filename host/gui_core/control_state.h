#pragma once

#include "control_type.h"
#include "core/object_state.h"
#include "core/value.h"

#include <QString>

namespace tarn {

/// What every control has. Places and sizes are pixels relative to the client area of its dialog.
struct ControlState : StateOf<ControlState> {
    explicit ControlState(int control_type = -1) : type(control_type) {}

    QString name;
    int type; ///< control type number; see ControlClass
    ObjectRef dialog;
    float x = 0;
    float y = 0;
    float width = 100;
    float height = 24;
    bool visible = true;
    bool enabled = true;
    bool locked = false;            ///< the view's mouse leaves it alone
    quint32 color_tag = 0xffffffff; ///< ARGB; a mark for the author, not drawn in the interface
    int align_type = 0;             ///< Anchor to the dialog's client area
    float base_width = 0;           ///< client area that place and size are meant for; 0: the present one
    float base_height = 0;

    static const FieldTable& field_table();
};

/// A control that shows a text: the static text, and the base of most types.
struct StaticState : StateOf<StaticState, ControlState> {
    explicit StaticState(int control_type = DXUT_CONTROL_STATIC) { type = control_type; }

    QString text;
    quint32 text_color = 0;   ///< ARGB; 0 takes the skin's
    int font_size = 0;        ///< pixels; 0 takes the skin's
    bool bold = false;
    int horizontal_align = 0; ///< 0 left, 1 centre, 2 right
    int vertical_align = 0;   ///< 0 top, 1 middle, 2 bottom
    bool word_wrap = false;
    bool shadow = false;

    static const FieldTable& field_table();
};

struct ButtonState : StateOf<ButtonState, StaticState> {
    ButtonState();
    static const FieldTable& field_table();
};

struct CheckBoxState : StateOf<CheckBoxState, StaticState> {
    bool checked = false;

    CheckBoxState();
    static const FieldTable& field_table();
};

struct PictureState : StateOf<PictureState, StaticState> {
    QString image;       ///< name in the scene's textures; empty or missing shows a place-holder while editing
    bool stretch = true; ///< fill the control; otherwise the picture keeps its size, from the top left

    PictureState();
    static const FieldTable& field_table();
};

} // namespace tarn
