#pragma once

#include "control_type.h"
#include "core/field_key.h"
#include "core/object_state.h"
#include "core/rare_data.h"
#include "core/value.h"

#include <QString>
#include <QStringList>

namespace tarn {

/// What few controls need, kept apart so that the others do not pay for it.
struct ControlExtras {
    float rotation = 0; ///< degrees clockwise
    bool has_center = false;
    float center_x = 0; ///< what the control is rotated about, pixels from its corner; without has_center its middle
    float center_y = 0;
    int saved_align_type = 0;   ///< the anchor from before scaling with the dialog was turned on
    quint32 color = 0xffffffff; ///< ARGB; what is drawn of the control takes it on
    float transparency = 0;     ///< 0 opaque to 1 not to be seen
    int tab_order = 0;          ///< when Tab comes to the control, from 1 on; 0: after all that have a number

    // What the author chose instead of the style's, by look_name(): "Body.hover". Names that are unknown are kept.
    TextMap style_images;                     ///< names in the scene's textures
    QMap<QString, quint32> style_colors;      ///< ARGB; the picture takes it on
    QMap<QString, quint32> style_text_colors; ///< ARGB by state_name(): "hover"
    QString font_family;                      ///< empty for the style's
    bool font_italic = false;

    ObjectRef right_click_menu;
    ObjectRef click_menu; ///< of buttons

    bool operator==(const ControlExtras&) const = default;
};

/// What every control has. Places and sizes are pixels relative to the client area of its dialog.
struct ControlState : StateOf<ControlState> {
    explicit ControlState(int control_type = -1) : type(control_type) {}

    QString name;
    int type; ///< control type number; see ControlClass
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
    RareData<ControlExtras> extras;

    static const FieldTable& field_table();
};

/// One coordinate of the rotation centre. A control has both of its own, or neither.
template <float ControlExtras::*own, float ControlState::*size>
struct CenterAccess {
    using Type = float;

    float get(const ControlState& s) const;
    void set(ControlState& s, float value) const;
    bool is_default(const ControlState& s) const;
    void copy(const ControlState& from, ControlState& to) const;
};
using CenterXAccess = CenterAccess<&ControlExtras::center_x, &ControlState::width>;
using CenterYAccess = CenterAccess<&ControlExtras::center_y, &ControlState::height>;

/// Whether the control scales with its dialog is a matter of its anchor.
struct ScaleModeAccess {
    using Type = int;
    static constexpr int default_value = 0;

    int get(const ControlState& s) const;
    void set(ControlState& s, int mode) const;
    bool is_default(const ControlState& s) const;
};

/// A control that shows a text: the static text, and the base of most types.
struct StaticState : StateOf<StaticState, ControlState> {
    explicit StaticState(int control_type = DXUT_CONTROL_STATIC) { type = control_type; }

    QString text;
    quint32 text_color = 0; ///< ARGB; 0 takes the skin's
    int font_size = 0;      ///< pixels; 0 takes the skin's
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

/// A button that is a picture in each of its states.
struct ImageButtonState : StateOf<ImageButtonState, StaticState> {
    QString image_normal; ///< names in the scene's textures; an empty one falls back to the normal picture
    QString image_hover;
    QString image_pressed;
    bool annotation_mode = false; ///< the caption stands in a bubble beside the button while the mouse is over it
    int annotation_x = 0;         ///< pixels from the button's corner to the bubble
    int annotation_y = 0;

    ImageButtonState();
    static const FieldTable& field_table();
};

struct CheckBoxState : StateOf<CheckBoxState, StaticState> {
    bool checked = false;
    QString image_unchecked; ///< names in the scene's textures; empty draws the skin's box
    QString image_checked;

    explicit CheckBoxState(int control_type = DXUT_CONTROL_CHECKBOX);
    static const FieldTable& field_table();
};

struct RadioButtonState : StateOf<RadioButtonState, CheckBoxState> {
    int group = 0; ///< of the radio buttons of one dialog with the same number, one is checked

    RadioButtonState();
    static const FieldTable& field_table();
};

/// A list of texts of which at most one is selected.
struct ItemsState : ControlState {
    QStringList items;
    int selected = -1; ///< index of an item; -1 for none

    void settle(const WrittenFields& written) override;
};

struct ComboBoxState : StateOf<ComboBoxState, ItemsState> {
    static constexpr int max_item_length = 255;

    ComboBoxState() { type = DXUT_CONTROL_COMBOBOX; }
    static const FieldTable& field_table();
};

struct ListBoxState : StateOf<ListBoxState, ItemsState> {
    static constexpr int max_item_length = 254;

    ListBoxState() { type = DXUT_CONTROL_LISTBOX; }
    static const FieldTable& field_table();
};

struct SliderState : StateOf<SliderState, ControlState> {
    int min = 0;
    int max = 100;
    int value = 50;

    SliderState() { type = DXUT_CONTROL_SLIDER; }
    static const FieldTable& field_table();
    void settle(const WrittenFields& written) override;
};

/// A scroll bar; it lies when it is wider than high and stands otherwise.
struct ScrollBarState : StateOf<ScrollBarState, ControlState> {
    int min = 0;
    int max = 100;
    int position = 0;
    int page_size = 10; ///< how much of the range is seen at once; the thumb's share of the track

    ScrollBarState() { type = DXUT_CONTROL_SCROLLBAR; }
    static const FieldTable& field_table();
    void settle(const WrittenFields& written) override;
};

struct EditBoxState : StateOf<EditBoxState, StaticState> {
    static constexpr int max_placeholder = 1000; ///< UTF-16 units

    int spacing = 4;             ///< pixels between the frame and the text
    int border = 0;              ///< pixels; width of a drawn border, 0 for none
    int max_length = 0;          ///< of the text, in UTF-16 units; 0 for any number
    bool password = false;       ///< dots instead of the characters
    bool numbers_only = false;   ///< nothing can be typed that is not a number
    bool read_only = false;      ///< the text can be selected and copied, not changed by typing
    QString placeholder;         ///< shown faintly while there is no text
    quint32 selection_color = 0; ///< ARGB, like the next two; 0 takes the skin's
    quint32 caret_color = 0;
    quint32 border_color = 0;

    EditBoxState();
    static const FieldTable& field_table();
    void settle(const WrittenFields& written) override;
};

struct ProgressState : StateOf<ProgressState, StaticState> {
    float percent = 50;           ///< 0 to 100
    int total = 100;              ///< what 100 per cent stand for
    int border = 2;               ///< pixels between the frame and the filling
    bool render_state = true;     ///< the filling grows; otherwise a part of the full one is uncovered
    bool percent_display = true;  ///< show the percentage
    bool info_display = false;    ///< show `message` instead
    bool texture_stretch = true;  ///< the picture is scaled to the filling; otherwise cut off
    bool integer_display = false; ///< numbers without decimals
    QString message;              ///< with the placeholders <num>, <total> and <percent>
    QString image;                ///< picture of the filling; empty takes the skin's

    ProgressState();
    static const FieldTable& field_table();
};

struct InfoBoxState : StateOf<InfoBoxState, StaticState> {
    static constexpr int max_line_length = 4096; ///< UTF-16 units
    QStringList lines;
    int line_height = 18; ///< pixels
    int max_lines = 200;  ///< older lines are dropped

    InfoBoxState();
    static const FieldTable& field_table();
    void settle(const WrittenFields& written) override;
};

struct FlashState : StateOf<FlashState, ControlState> {
    QString source; ///< file name of the movie among the package's movies, or a URL
    bool source_local = true;
    bool high_priority = false;
    bool script_download = false;
    bool keep_size = false;
    bool transparent = false;
    bool keep_global = false;
    bool mouse_input = true;
    bool keyboard_input = false;
    bool chinese_input = false;
    int translucency = 0;  ///< per cent of the scene that shows through the movie; needs a movie without Chinese input
    bool reload = true;    ///< the movie is loaded anew when it is next shown; an edit of its settings clears it
    QStringList callbacks; ///< functions that the movie calls by name

    FlashState() { type = DXUT_CONTROL_FLASH; }
    static const FieldTable& field_table();
};

/// A view into the world through another camera.
struct PictureInPictureState : StateOf<PictureInPictureState, ControlState> {
    ObjectRef camera; ///< of the world; or none
    quint32 background_color = 0xff202830;
    bool frame_shown = true;

    PictureInPictureState() { type = DXUT_CONTROL_PIP; }
    static const FieldTable& field_table();
};

/// A navigation map.
struct MapState : StateOf<MapState, ControlState> {
    QString image_map; ///< names in the scene's textures
    QString image_surface;
    QString image_base;
    float range_top = 100; ///< edges of the part of the world that the map shows, in metres
    float range_left = -100;
    float range_bottom = -100;
    float range_right = 100;
    bool lock_center = true; ///< the map moves under the figure; otherwise the figure over the map
    float default_scale = 1;
    float zoom_rate = 1.2f;
    int zoom_in_x = 8; ///< places of the two buttons, pixels from the map's corner
    int zoom_in_y = 8;
    int zoom_out_x = 8;
    int zoom_out_y = 36;
    bool eagle_eye = false;
    ObjectRef camera_model; ///< the object of the world that the eagle's eye collides with, or none

    MapState() { type = DXUT_CONTROL_MAP; }
    static const FieldTable& field_table();
};

struct PictureState : StateOf<PictureState, StaticState> {
    QString image;       ///< name in the scene's textures; empty or missing shows a place-holder while editing
    bool stretch = true; ///< fill the control; otherwise the picture keeps its size, from the top left

    PictureState();
    static const FieldTable& field_table();
};

} // namespace tarn
