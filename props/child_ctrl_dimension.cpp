#include "child_ctrl_dimension.h"

#include "anchor_rows.h"
#include "gui_core/control_state.h"
#include "gui_core/dxut_control.h"
#include "widgets/button_st.h"

#include <QCheckBox>

using tarn::CenterXAccess;
using tarn::CenterYAccess;
using tarn::ControlExtras;
using tarn::ControlState;
using tarn::FieldRow;
using tarn::key;
using tarn::ScaleModeAccess;

namespace {

enum Id : int {
    id_x = 6337,
    id_y = 6339,
    id_width = 6026,
    id_height = 6341,
    id_keep_ratio = 6345,
    id_rotation = 6410,
    id_center_x = 6412,
    id_center_y = 6413,
    id_center_reset = 6415,
    id_scale_mode = 6593,
};

constexpr FieldRow rows[] = {
    {.control = id_x, .field = key<&ControlState::x>},
    {.control = id_y, .field = key<&ControlState::y>},
    {.control = id_width, .field = key<&ControlState::width>},
    {.control = id_height, .field = key<&ControlState::height>},
    {.control = id_rotation, .field = key<&ControlExtras::rotation>},
    {.control = id_center_x, .field = key<CenterXAccess{}>},
    {.control = id_center_y, .field = key<CenterYAccess{}>},
    {.control = id_scale_mode, .field = key<ScaleModeAccess{}>},
};

constexpr auto anchors = tarn::anchor_rows(key<&ControlState::align_type>, tarn::Scope::EverySelected,
                                           tarn::Follows::Broadcast);

} // namespace

CChildCtrlDimension::CChildCtrlDimension(QWidget* parent)
    : CBoundPage(QStringLiteral("CChildCtrlDimension"), Target::Controls, parent)
{
}

void CChildCtrlDimension::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    bind(rows);
    bind(anchors);
    for (const FieldRow& row : anchors)
        button(row.control)->SetIcon(tarn::anchor_icon(*row.option));
    on_click(id_center_reset, [this] {
        for (tarn::ModelObject* object : selected())
            static_cast<CDXUTControl*>(object)->reset_center();
        tell_changed();
    });
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
    const auto* control = static_cast<const CDXUTControl*>(current());
    control_as<QCheckBox>(id_keep_ratio)->setEnabled(control);
    button(id_center_reset)->setEnabled(control && control->has_own_center());
    // While place and size scale, no side is kept to.
    const tarn::CommonValue anchor = tarn::common_value(selected(), key<&ControlState::align_type>);
    if (anchor.value == tarn::Value(qint64(tarn::anchor_scale)))
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
