#pragma once

#include <QtGlobal>

namespace tarn {

/// The share that is left of what is drawn with an ARGB colour and a transparency, 0 to 1.
constexpr double opacity_of(quint32 color, float transparency)
{
    return (1 - double(transparency)) * double(color >> 24) / 255;
}

/// How a control or a part of a dialog looks at the moment.
enum class VisualState { Normal, Hover, Pressed, Disabled, Focused, Hidden };

/// The pictures of the skin, by the rows of its sheet.
enum class Element {
    Button,
    CheckBox,
    CheckMark,
    Caption,
    Frame,
    CloseButton,
    MinimizeButton,
    RestoreButton,
    RadioButton,
    RadioDot,
    ComboBox,
    DropArrow,
    Field,
    SelectedRow,
    SliderTrack,
    SliderThumb,
    ScrollTrack,
    ScrollThumb,
    // the sheet's last row holds pictures without states
    ProgressFrame,
    ProgressFill,
    InfoPanel,
    Bubble,
    PicturePlaceholder,
    MoviePlaceholder,
    MapPlaceholder,
    CameraPlaceholder,
    White,
};

} // namespace tarn
