#include "dlg_prop_progress_bar.h"

#include "gui_core/control_type.h"

using tarn::FieldRow;
using tarn::Gate;
using tarn::NumberLook;
using tarn::Scope;

namespace {

constexpr FieldRow number_row(int control, const char* field, NumberLook number)
{
    return {.control = control, .field = field, .scope = Scope::Current, .gate = Gate::WithFocus, .number = number};
}

constexpr FieldRow row(int control, const char* field)
{
    return {.control = control, .field = field, .scope = Scope::Current};
}

constexpr FieldRow rows[] = {
    number_row(6213, "percent", {.format = "%.2f"}),
    number_row(6413, "total", {.format = "%.0f"}),
    number_row(6214, "border", {.format = "%.0f"}),
    row(6506, "render_state"),
    row(6512, "percent_display"),
    row(6513, "info_display"),
    row(6519, "texture_stretch"),
    row(6522, "shadow"),
    row(6094, "integer_display"),
    row(6215, "message"),
};

} // namespace

CDlgPropProgressBar::CDlgPropProgressBar(QWidget* parent)
    : CBoundPage(QStringLiteral("CDlgPropProgressBar"), DXUT_CONTROL_PROGRESS, parent)
{
}

void CDlgPropProgressBar::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    bind(rows);
}
