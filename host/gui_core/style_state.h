#pragma once

#include "atlas.h"
#include "core/object_state.h"
#include "core/value.h"

#include <QMargins>
#include <QString>

namespace tarn {

/// Where a style comes from.
enum class StyleOrigin { Scene, User, Program };

/// A named set of looks. What it does not say, the style says that it is based on, and in the end the program's own look.
/// Parts are called as part_name() does; names that are unknown are kept.
struct StyleState : StateOf<StyleState> {
    static constexpr int max_name = 300; ///< UTF-16 units

    QString name;                  ///< empty for what the author changed since he took a style on
    ObjectRef base;                ///< the style that this one is based on; none for the program's own look
    int origin = 0;                ///< a StyleOrigin
    QMap<QString, quint32> tokens; ///< ARGB by name
    TextMap colors;                ///< by part_name(): color_text()
    /// Where the pictures are in the style's own atlas, where not in all of default_rect(): rect_text().
    TextMap regions;
    TextMap edges;                     ///< widths of the pictures' edges, pixels of the atlas: edges_text()
    TextMap fonts;                     ///< families by the owners' names
    QMap<QString, quint32> font_sizes; ///< pixels, by the owners' names
    TextMap font_styles;               ///< font_style_text() by the owners' names
    Atlas atlas;                       ///< none: that of the style that this one is based on

    static const FieldTable& field_table();
};

/// A colour in a style: that of a token, by its name, or ARGB of its own.
struct StyleValue {
    QString token;
    quint32 color = 0;
};
QString color_text(quint32 argb); ///< "#ff2f7f8f"
/// A text that is none is one of a token that there is not.
StyleValue style_value(const QString& text);

/// How letters stand, whatever their font.
struct FontStyle {
    bool bold = false;
    bool italic = false;
    bool shadow = false;

    bool operator==(const FontStyle&) const = default;
};
QString font_style_text(FontStyle style); ///< "bold shadow"; "regular" for none of them
/// Words that are unknown count for nothing.
FontStyle font_style_from(const QString& text);

QString rect_text(const QRect& rect);               ///< "left top right bottom", where right and bottom lie outside
QRect rect_from(const QString& text);               ///< empty for a text that is none, and for one outside all atlases
QString edges_text(const QMargins& edges);          ///< "left/top/right/bottom"
QMargins edges_from(const QString& text, bool& ok); ///< none of them is negative

} // namespace tarn
