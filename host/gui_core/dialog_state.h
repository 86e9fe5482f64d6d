#pragma once

#include "core/held_value.h"
#include "core/object_state.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

namespace tarn {

/// A dialog's data. Places and sizes are whole pixels of the screen that base_width and base_height tell; `y` is the top of
/// the caption bar when it is shown, and `height` does not count it.
struct DialogState : StateOf<DialogState> {
    QString name;
    QString caption;
    int x = 0;
    int y = 0;
    int width = 200;
    int height = 150;
    int caption_height = 24;
    bool caption_shown = true;
    bool frame_shown = true;
    bool minimize_button = false;
    bool movable = true;
    bool close_button = true;
    int border_width = 0;
    int align_type = 0;       ///< Anchor to the screen
    int saved_align_type = 0; ///< the anchor from before scaling with the window was turned on
    bool minimize_to_bottom = false;
    bool always_on_top = false;
    bool visible = true;
    quint32 color = 0xffffffff; ///< ARGB; what is drawn of the dialog and its controls takes it on
    float transparency = 0;     ///< 0 opaque to 1 not to be seen
    int base_width = 0;         ///< screen that place and size are meant for; 0: the design size of the interface
    int base_height = 0;

    // The texture on which the dialog is drawn in the world.
    QString bind_texture;            ///< name in the scene's textures; empty for none
    quint32 bind_color = 0xffffffff; ///< ARGB; fills the texture under the dialog
    bool bind_mouse = true;          ///< the dialog there takes the mouse

    ObjectRef right_click_menu; ///< opens where a right click meets no control with one of its own

    IdList controls; ///< from the bottom layer to the top

    /// That of the root dialog of an empty interface.
    static DialogState* root();

    static const FieldTable& field_table();
};

/// What the interface as a whole keeps.
struct CoreState : StateOf<CoreState> {
    int screen_width = 1280; ///< design size of the screen
    int screen_height = 720;
    /// Guide lines of the author, pixels from the screen's corner, in ascending order without doubles.
    QList<quint32> vertical_guides;
    QList<quint32> horizontal_guides;
    ObjectRef scene_style;     ///< which is in force; none for the program's own look
    float animation_speed = 1; ///< of the interface's own transitions; twice as fast at 2, none at 0
    IdList dialogs;            ///< from the bottom layer to the top, without the root dialog
    IdList menus;              ///< in the order in which they were made
    IdList styles;             ///< those that the scene keeps, in the order in which they came

    static const FieldTable& field_table();
    void settle(const WrittenFields& written) override;
};

} // namespace tarn
