#include "dlg_prop_static.h"

#include "gui_core/control_state.h"
#include "gui_core/control_type.h"

using tarn::key;
using tarn::StaticState;

namespace {

constexpr tarn::FieldRow rows[] = {
    {.control = 6352, .field = key<&StaticState::text>},
    {.control = 6097, .field = key<&StaticState::horizontal_align>},
    {.control = 6525, .field = key<&StaticState::vertical_align>},
    {.control = 6509, .field = key<&StaticState::word_wrap>},
    {.control = 6116, .field = key<&StaticState::shadow>},
};

} // namespace

CDlgPropStatic::CDlgPropStatic(QWidget* parent)
    : CBoundPage(QStringLiteral("CDlgPropStatic"), DXUT_CONTROL_STATIC, parent)
{
}

void CDlgPropStatic::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    bind(rows);
}
