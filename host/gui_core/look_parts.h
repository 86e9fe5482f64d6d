#pragma once

#include "look.h"

#include <QImage>
#include <QMargins>
#include <QRect>
#include <QString>

#include <span>

namespace tarn {

/// A part of a control that is drawn from a picture of the atlas, or from one that the author chose instead.
struct StyleElement {
    Element element;
    const char* name; ///< in files; it never changes
    const char16_t* chinese;
    const char16_t* english;
    int spare = -1; ///< row of spare_cell() where its own picture goes; -1: it has a row of the sheet itself

    QString caption() const; ///< in the program's language
};

/// The states that can look different: VisualState::Normal to Focused.
constexpr int style_state_count = 5;

/// A colour that a part is drawn in without a picture.
struct StyleColor {
    const char* name; ///< in files
    const char16_t* chinese;
    const char16_t* english;
    const char* tokens[style_state_count]; ///< what it is where no style says anything, by state
    bool has_states = false;

    QString caption() const;
};

/// What is made of parts: the control types by their numbers, and these.
constexpr int look_owner_dialog = 100;
constexpr int look_owner_menu = 101;

/// Among the colours of an edit box.
enum EditBoxColor : int { edit_box_selection = 1, edit_box_caret, edit_box_border };

struct LookOwner {
    int number;
    const char* name;        ///< in files: "Button"
    const char16_t* chinese; ///< null for a control type, which has a name elsewhere
    const char16_t* english;
    std::span<const StyleElement> elements;
    std::span<const StyleColor> colors;

    QString caption() const;
};

/// All that a style gives a look, in the order in which an author sees them.
std::span<const LookOwner> look_owners();
/// Null for what has no parts.
const LookOwner* look_owner(int number);

// Parts of an owner are counted: its elements first, then its colours.
int part_count(const LookOwner& owner);
/// Null for a part that is a colour, or none.
const StyleElement* element_part(const LookOwner& owner, int part);
const StyleColor* color_part(const LookOwner& owner, int part);
QString part_caption(const LookOwner& owner, int part);
bool part_has_states(const LookOwner& owner, int part);
/// Whether the part is the colour of the owner's texts, which comes first among its colours.
bool is_text_part(const LookOwner& owner, int part);
/// "Button.Body.hover": a part in a state, in files.
QString part_name(const LookOwner& owner, int part, VisualState state);

/// The room that the part's picture has in an atlas, pixels; empty for a colour. A part without states has one for all.
QRect default_rect(const LookOwner& owner, int part, VisualState state);
/// How wide the edges of the part's picture are where nothing else is said, pixels of the atlas.
QMargins default_edges(const StyleElement& element);
/// The sheet of a skin, in which parts share pictures, with a picture of its own for every part.
QImage with_own_cells(const QImage& sheet);

/// A named colour: what refers to it changes with it.
struct StyleToken {
    const char* name; ///< in files
    const char16_t* chinese;
    const char16_t* english;
    quint32 color; ///< ARGB, where no style says another

    QString caption() const;
};

/// Those that the program's own look is made of. Styles may have more.
std::span<const StyleToken> style_tokens();

} // namespace tarn
