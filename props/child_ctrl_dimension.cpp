#include "child_ctrl_dimension.h"

#include "anchor_rows.h"
#include "gui_core/control_state.h"
#include "gui_core/dxut_control.h"
#include "gui_core/gui_core.h"
#include "widgets/button_st.h"

#include <QApplication>
#include <QCheckBox>

#include <utility>

using tarn::ControlExtras;
using tarn::ControlState;
using tarn::FieldRow;
using tarn::key;

namespace {

enum Id : int {
    id_x = 6337,
    id_y = 6339,
    id_width = 6026,
    id_height = 6341,
    id_keep_ratio = 6345,
    id_tab_order = 6416,
    id_rotation = 6410,
    id_center_x = 6412,
    id_center_y = 6413,
    id_center_reset = 6415,
    id_scale_mode = 6593,
    id_transparency = 6890,
    id_color = 6891,
};

constexpr FieldRow place_row(int control, tarn::FieldKey field)
{
    return {.control = control, .field = field, .reset = tarn::Default::None};
}

constexpr FieldRow rows[] = {
    place_row(id_x, key<&ControlState::x>),
    place_row(id_y, key<&ControlState::y>),
    place_row(id_width, key<&ControlState::width>),
    place_row(id_height, key<&ControlState::height>),
    {.control = id_tab_order, .field = key<&ControlExtras::tab_order>},
    {.control = id_rotation, .field = key<&ControlExtras::rotation>},
    place_row(id_center_x, key<tarn::CenterXAccess{}>),
    place_row(id_center_y, key<tarn::CenterYAccess{}>),
    {.control = id_scale_mode, .field = key<tarn::ScaleModeAccess{}>},
    {.control = id_transparency, .field = key<&ControlExtras::transparency>, .number = {.step = 0.05}},
    {.control = id_color, .field = key<&ControlExtras::color>},
};

constexpr auto anchors = tarn::anchor_rows(key<&ControlState::align_type>, tarn::Scope::EverySelected,
                                           tarn::Follows::Broadcast);

tarn::ActionResult reset_centers(CGuiPlugScene&, std::span<tarn::ModelObject* const> selected, tarn::ModelObject&)
{
    for (tarn::ModelObject* object : selected)
        static_cast<CDXUTControl*>(object)->reset_center();
    return {.changed = true};
}

bool has_own_center(const tarn::ModelObject& current)
{
    return static_cast<const CDXUTControl&>(current).has_own_center();
}

constexpr tarn::ActionRow center_actions[] = {{id_center_reset, reset_centers, has_own_center}};

} // namespace

CChildCtrlDimension::CChildCtrlDimension(QWidget* parent)
    : CBoundPage(QStringLiteral("CChildCtrlDimension"), tarn::selected_controls, parent)
{
}

void CChildCtrlDimension::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    bind(rows);
    bind(anchors);
    for (const FieldRow& row : anchors)
        button(row.control)->SetIcon(tarn::anchor_icon(*row.option));
    bind_actions(center_actions);
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget*, const QWidget* focused) { follow_focus(focused); });
}

/// While the order is edited the view shows it, and goes on so while the next control is clicked there.
void CChildCtrlDimension::follow_focus(const QWidget* focused)
{
    const QWidget* field = control(id_tab_order);
    const auto is_in_page = [](const QWidget* widget) {
        while (widget && !qobject_cast<const CChildDlg*>(widget))
            widget = widget->parentWidget();
        return widget != nullptr;
    };
    if (focused && (focused == field || field->isAncestorOf(focused)))
        show_tab_numbers(true);
    else if (is_in_page(focused))
        show_tab_numbers(false);
}

void CChildCtrlDimension::show_tab_numbers(bool show)
{
    if (core() && std::exchange(core()->view_aids().tab_numbers, show) != show)
        update_all_views();
}

void CChildCtrlDimension::hideEvent(QHideEvent* event)
{
    CBoundPage::hideEvent(event);
    show_tab_numbers(false);
}

bool CChildCtrlDimension::keeps_ratio() const
{
    return control_as<QCheckBox>(id_keep_ratio)->isChecked();
}

void CChildCtrlDimension::set_aspect(float aspect)
{
    if (aspect != 0 || !keeps_ratio())
        m_aspect = aspect;
}

void CChildCtrlDimension::refresh()
{
    CBoundPage::refresh();
    control_as<QCheckBox>(id_keep_ratio)->setEnabled(has_selection());
    // While place and size scale, no side is kept to.
    const tarn::CommonValue anchor = tarn::common_value(selected(), key<&ControlState::align_type>);
    if (anchor.agreement == tarn::CommonValue::Agreement::Same
        && anchor.value == tarn::Value(qint64(tarn::anchor_scale)))
        for (const FieldRow& row : anchors)
            button(row.control)->setEnabled(false);
}

void CChildCtrlDimension::row_edited(int id, const tarn::Value& value)
{
    const auto* number = std::get_if<double>(&value);
    if (!number || !keeps_ratio() || m_aspect == 0)
        return;
    if (id == id_width)
        write(key<&ControlState::height>, *number / m_aspect);
    else if (id == id_height)
        write(key<&ControlState::width>, *number * m_aspect);
}
