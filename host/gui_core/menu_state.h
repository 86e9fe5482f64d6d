#pragma once

#include "core/object_state.h"
#include "core/value.h"

#include <QString>

namespace tarn {

/// A menu's data: how it looks, and its items. Lengths are pixels of the screen.
struct MenuState : StateOf<MenuState> {
    QString name;
    int item_height = 28;
    int separator_height = 9;
    int min_width = 160; ///< of a list of items
    int max_width = 480; ///< longer texts are cut short
    int icon_width = 28; ///< of the column for icons and check marks; a list without any has none
    int padding = 5;     ///< between a list's edge and its items

    // What the author chose instead of the style's, by look_name(): "SelectedRow.normal". Names that are unknown are kept.
    TextMap style_images;                     ///< names in the scene's textures
    QMap<QString, quint32> style_colors;      ///< ARGB; the picture takes it on
    QMap<QString, quint32> style_text_colors; ///< ARGB by state_name(): "hover"
    QString font_family;                      ///< empty for the style's
    int font_size = 0;                        ///< pixels; 0 takes the style's
    bool bold = false;
    bool font_italic = false;

    IdList items; ///< from top to bottom; see MenuItemState::level

    static const FieldTable& field_table();
    void settle(const WrittenFields& written) override;
};

/// A line of a menu.
struct MenuItemState : StateOf<MenuItemState> {
    static constexpr int deepest_level = 7;

    QString text;
    QString shortcut; ///< what is shown at the right end; no key that is heard
    QString icon;     ///< name in the scene's textures
    QString function; ///< the scene function that runs when the item is chosen; there need not be one of that name
    bool enabled = true;
    bool checkable = false; ///< choosing the item checks and unchecks it
    bool checked = false;
    bool separator = false; ///< a line between groups of items, and no more
    /// How deep in submenus the item lies. Items that follow one with a deeper level are its submenu.
    int level = 0;

    static const FieldTable& field_table();
    void settle(const WrittenFields& written) override;
};

} // namespace tarn
