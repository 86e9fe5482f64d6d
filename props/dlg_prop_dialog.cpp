#include "dlg_prop_dialog.h"

#include "anchor_rows.h"
#include "gui_core/dxut_dialog.h"
#include "widgets/button_st.h"

#include <QCheckBox>

using tarn::FieldRow;
using tarn::Follows;
using tarn::NumberLook;
using tarn::Scope;
using tarn::Shows;
using tarn::Value;

namespace {

enum Id : int {
    id_width = 6026,
    id_height = 6341,
    id_keep_ratio = 6345,
    id_scale = 6593,
};

constexpr int all_together = 1; ///< an edit of any writes them all
constexpr NumberLook pixels{.step = 1, .format = "%.0f", .minimum = 0, .maximum = 9999};

constexpr FieldRow shared_row(int control, const char* field)
{
    return {.control = control, .field = field, .shows = Shows::Current, .together = all_together};
}

constexpr FieldRow place_row(int control, const char* field)
{
    return {.control = control, .field = field, .scope = Scope::Current, .together = all_together, .number = pixels};
}

constexpr FieldRow rows[] = {
    shared_row(6335, "visible"),
    shared_row(6019, "caption_shown"),
    shared_row(6333, "frame_shown"),
    shared_row(6031, "minimize_button"),
    shared_row(6020, "movable"),
    shared_row(6021, "close_button"),
    shared_row(6018, "name"),
    shared_row(6362, "caption"),
    place_row(6337, "x"),
    place_row(6339, "y"),
    place_row(id_width, "width"),
    place_row(id_height, "height"),
    place_row(6343, "caption_height"),
    {.control = 6030, .field = "border_width", .shows = Shows::Current, .follows = Follows::Redraw, .number = pixels},
    {.control = 6508, .field = "minimize_to_bottom", .scope = Scope::Current, .follows = Follows::Nothing},
};

constexpr auto anchors = tarn::anchor_rows(Scope::Current, Follows::Redraw);

const CDXUTDialog* as_dialog(const tarn::ModelObject* object)
{
    return static_cast<const CDXUTDialog*>(object);
}

} // namespace

CDlgPropDialog::CDlgPropDialog(QWidget* parent) : CBoundPage(QStringLiteral("CDlgPropDialog"), Target::Dialogs, parent)
{
}

void CDlgPropDialog::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    bind(rows);
    bind(anchors);
    for (const FieldRow& row : anchors)
        button(row.control)->SetIcon(tarn::anchor_icon(*row.option));
    on_click(id_keep_ratio, [this] { on_keep_ratio(); });
    on_click(id_scale, [this] { on_scale_with_window(); });
}

void CDlgPropDialog::refresh()
{
    CBoundPage::refresh();
    const CDXUTDialog* dialog = as_dialog(current());
    auto* scale = control_as<QCheckBox>(id_scale);
    scale->setEnabled(dialog);
    button(id_keep_ratio)->setEnabled(dialog);
    const bool scales = dialog && dialog->align_type() == tarn::anchor_scale;
    scale->setChecked(scales);
    for (const FieldRow& row : anchors)
        button(row.control)->setEnabled(dialog && !scales);
    if (!is_writing())
        on_keep_ratio();
}

void CDlgPropDialog::on_keep_ratio()
{
    const CDXUTDialog* dialog = as_dialog(current());
    const QRect rect = dialog ? dialog->rect() : QRect();
    m_aspect = rect.height() != 0 ? double(rect.width()) / rect.height() : 0;
}

void CDlgPropDialog::row_edited(int id, const Value& value)
{
    const auto* number = std::get_if<double>(&value);
    if (!number || !button(id_keep_ratio)->isChecked())
        return;
    if (id == id_width && m_aspect != 0)
        write("height", *number / m_aspect, Scope::Current);
    else if (id == id_height)
        write("width", *number * m_aspect, Scope::Current);
}

void CDlgPropDialog::on_scale_with_window()
{
    const bool scale = control_as<QCheckBox>(id_scale)->isChecked();
    for (tarn::ModelObject* object : selected()) {
        auto* dialog = static_cast<CDXUTDialog*>(object);
        dialog->set_scaled(scale);
        dialog->on_pos_scale_changed();
    }
    refresh();
    update_all_views();
}
