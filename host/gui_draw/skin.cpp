#include "skin.h"

#include <utility>

namespace tarn {

namespace {

constexpr int sheet_width = 512;
constexpr int cell = 48;
constexpr int pitch = 52;
constexpr int origin = 2;
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

Skin::Skin(QImage atlas)
    : m_atlas(std::move(atlas).convertToFormat(QImage::Format_ARGB32_Premultiplied)),
      m_pixels_per_unit(double(m_atlas.width()) / sheet_width)
{
}

const Skin& Skin::default_skin()
{
    static const Skin skin{QImage(QStringLiteral(":/skin/default.png"))};
    return skin;
}

bool Skin::has_states(Element element)
{
    return static_cast<int>(element) < first_of_last_row;
}

ElementPicture Skin::picture(Element element, VisualState state)
{
    const int number = static_cast<int>(element);
    const int row = std::min(number, first_of_last_row);
    const int column = number < first_of_last_row ? column_of(state) : number - first_of_last_row;
    return {QRect(origin + column * pitch, origin + row * pitch, cell, cell), edges_of(element), is_icon(element)};
}

quint32 Skin::text_color(VisualState state, quint32 text_color)
{
    if (state == VisualState::Disabled)
        return 0xff7f8c93;
    if (text_color)
        return text_color;
    return state == VisualState::Hover || state == VisualState::Focused ? 0xffffffff : 0xffe8eef0;
}

} // namespace tarn
