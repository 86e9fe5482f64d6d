#include "child_menu_design.h"

#include "color_rows.h"
#include "core/language.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"
#include "gui_core/style_look.h"
#include "gui_scene/gui_plug_scene.h"
#include "page_base/font_choices.h"
#include "page_base/menu_picture.h"
#include "page_base/value_part.h"

#include <algorithm>

using tarn::FieldKey;
using tarn::FieldRow;
using tarn::key;
using tarn::lang;
using tarn::MenuState;
using tarn::ModelObject;
using tarn::Part;
using tarn::Value;
using tarn::VisualState;

namespace {

constexpr const char* background = "Background.normal";
constexpr const char* selected_row = "SelectedRow.normal";

constexpr FieldRow design_row(int control, FieldKey field)
{
    return {.control = control, .field = field, .scope = tarn::Scope::Current};
}

constexpr FieldRow pixels_row(int control, FieldKey field)
{
    FieldRow row = design_row(control, field);
    row.number = {.format = "%.0f"};
    return row;
}

template <VisualState state>
constexpr FieldRow text_color_row(int control, const char* name)
{
    FieldRow row = design_row(control, key<&MenuState::style_text_colors>);
    row.part = tarn::entry(name);
    row.conversion = {.shown = tarn::seen_text_color<state>, .stored = tarn::chosen_color};
    row.blank_color = 0xffffffff;
    return row;
}

constexpr FieldRow tint_row(int control, const char* look)
{
    FieldRow row = design_row(control, key<&MenuState::style_colors>);
    row.part = tarn::entry(look);
    row.conversion = {.stored = tarn::chosen_color};
    row.blank_color = 0xffffffff;
    return row;
}

Value seen_font_size(const ModelObject& object, const Value& chosen, Part)
{
    const tarn::StyleLook& look = static_cast<const CDXUTMenu&>(object).core().look();
    return tarn::number_of(chosen) != 0 ? chosen : Value(qint64(look.font_size(tarn::look_owner_menu)));
}

constexpr FieldRow family_row(int control)
{
    FieldRow row = design_row(control, key<&MenuState::font_family>);
    row.choices = tarn::font_choices;
    return row;
}

constexpr FieldRow size_row(int control)
{
    FieldRow row = pixels_row(control, key<&MenuState::font_size>);
    row.number.minimum = 1;
    row.conversion = {.shown = seen_font_size};
    return row;
}

constexpr FieldRow rows[] = {
    pixels_row(6841, key<&MenuState::item_height>),
    pixels_row(6842, key<&MenuState::separator_height>),
    pixels_row(6843, key<&MenuState::min_width>),
    pixels_row(6844, key<&MenuState::max_width>),
    pixels_row(6845, key<&MenuState::icon_width>),
    pixels_row(6846, key<&MenuState::padding>),
    family_row(6847),
    size_row(6848),
    design_row(6849, key<&MenuState::bold>),
    design_row(6850, key<&MenuState::font_italic>),
    text_color_row<VisualState::Normal>(6851, "normal"),
    text_color_row<VisualState::Hover>(6852, "hover"),
    text_color_row<VisualState::Disabled>(6853, "disabled"),
    tint_row(6856, background),
    tint_row(6859, selected_row),
};

constexpr tarn::ImageRow images[] = {
    {6854, 6855, key<&MenuState::style_images>, tarn::entry(background)},
    {6857, 6858, key<&MenuState::style_images>, tarn::entry(selected_row)},
};

/// Something is to be seen of the highlighted row.
int first_choosable(const CDXUTMenu& menu)
{
    const auto found = std::find_if(menu.items().begin(), menu.items().end(),
                                    [](const CDXUTMenuItem* item) { return item->can_be_chosen(); });
    return found == menu.items().end() ? -1 : int(found - menu.items().begin());
}

} // namespace

CChildMenuDesign::CChildMenuDesign(QWidget* parent)
    : CBoundPage(QStringLiteral("CChildMenuDesign"), tarn::current_menu, parent)
{
}

QWidget* CChildMenuDesign::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name == QLatin1String("CMenuPicture"))
        return m_picture = new CMenuPicture(parent);
    return nullptr;
}

void CChildMenuDesign::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    bind(rows);
    bind_images(images);
}

void CChildMenuDesign::refresh()
{
    CBoundPage::refresh();
    const auto* shown = static_cast<const CDXUTMenu*>(current());
    m_picture->show_menu(core(), shown, shown ? first_choosable(*shown) : -1);
}
