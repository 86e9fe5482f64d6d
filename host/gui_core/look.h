#pragma once

namespace tarn {

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
