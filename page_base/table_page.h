#pragma once

#include "bound_page.h"

namespace tarn {

/// A page that is only a table. The class name is the page's own: its captions are translated under it, and automation
/// finds the page by it.
struct PageEntry {
    const char* class_name;
    int template_id;
    const Target* target;
    std::span<const FieldRow> rows = {};
    std::span<const ScriptRow> scripts = {};
    std::span<const ImageRow> images = {};
    SetImage set_image = nullptr; ///< see ImageRows::bind()
    std::span<const ActionRow> actions = {};
    std::span<const BoundMenuRow> menus = {};
    std::span<const SceneObjectRow> objects = {};
    CBoundPage* (*make)() = nullptr; ///< makes the page where it is more than a table; the rest but `target` is empty
};

/// Makes the page from its template as a child of `parent`. What `entry` refers to has to stay.
CBoundPage* make_page(const PageEntry& entry, QWidget* parent);

} // namespace tarn
