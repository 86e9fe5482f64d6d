#include "dlg_prop_progress_bar.h"

#include "gui_core/control_state.h"
#include "gui_core/control_type.h"

using tarn::FieldRow;
using tarn::Gate;
using tarn::key;
using tarn::NumberLook;
using tarn::ProgressState;
using tarn::Scope;
using tarn::StaticState;

namespace {

constexpr FieldRow number_row(int control, tarn::FieldKey field, NumberLook number)
{
    return {.control = control, .field = field, .scope = Scope::Current, .gate = Gate::WithFocus, .number = number};
}

constexpr FieldRow row(int control, tarn::FieldKey field)
{
    return {.control = control, .field = field, .scope = Scope::Current};
}

constexpr FieldRow rows[] = {
    number_row(6213, key<&ProgressState::percent>, {.format = "%.2f"}),
    number_row(6413, key<&ProgressState::total>, {.format = "%.0f"}),
    number_row(6214, key<&ProgressState::border>, {.format = "%.0f"}),
    row(6506, key<&ProgressState::render_state>),
    row(6512, key<&ProgressState::percent_display>),
    row(6513, key<&ProgressState::info_display>),
    row(6519, key<&ProgressState::texture_stretch>),
    row(6522, key<&StaticState::shadow>),
    row(6094, key<&ProgressState::integer_display>),
    row(6215, key<&ProgressState::message>),
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
