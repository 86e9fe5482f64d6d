#include "skin_sheet.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr int cell = 48;
constexpr int pitch = 52;
constexpr int origin = 2;
constexpr int spare_pitch = 50;
constexpr int spare_origin = 262;
constexpr int first_of_last_row = static_cast<int>(Element::ProgressFrame);

QMargins edges_of(Element element)
{
    switch (element) {
    case Element::Caption: return {14, 14, 14, 4};
    case Element::SliderTrack: return {14, 0, 14, 0};
    case Element::SelectedRow: return {6, 6, 6, 6};
    case Element::ScrollTrack:
    case Element::ScrollThumb:
    case Element::ProgressFrame:
    case Element::ProgressFill: return {10, 10, 10, 10};
    default: return {14, 14, 14, 14};
    }
}

bool is_icon(Element element)
{
    switch (element) {
    case Element::CheckBox:
    case Element::CheckMark:
    case Element::CloseButton:
    case Element::MinimizeButton:
    case Element::RestoreButton:
    case Element::RadioButton:
    case Element::RadioDot:
    case Element::DropArrow:
    case Element::SliderThumb:
    case Element::PicturePlaceholder:
    case Element::MoviePlaceholder:
    case Element::MapPlaceholder:
    case Element::CameraPlaceholder: return true;
    default: return false;
    }
}

int column_of(VisualState state)
{
    return state == VisualState::Hidden ? 0 : static_cast<int>(state);
}

} // namespace

bool has_states(Element element)
{
    return static_cast<int>(element) < first_of_last_row;
}

ElementPicture sheet_picture(Element element, VisualState state)
{
    const int number = static_cast<int>(element);
    const int row = std::min(number, first_of_last_row);
    const int column = has_states(element) ? column_of(state) : number - first_of_last_row;
    return {QRect(origin + column * pitch, origin + row * pitch, cell, cell), edges_of(element), is_icon(element)};
}

QRect spare_cell(Element element, VisualState state, int row)
{
    const int column = has_states(element) ? column_of(state) : 0;
    return {spare_origin + column * spare_pitch, origin + row * pitch, cell, cell};
}

const QImage& default_sheet()
{
    static const QImage sheet = QImage(QStringLiteral(":/skin/default.png")).convertToFormat(QImage::Format_ARGB32);
    return sheet;
}

} // namespace tarn
