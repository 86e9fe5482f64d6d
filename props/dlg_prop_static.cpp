#include "dlg_prop_static.h"

#include "gui_core/control_type.h"

namespace {

constexpr tarn::FieldRow rows[] = {
    {.control = 6352, .field = "text"},           {.control = 6097, .field = "horizontal_align"},
    {.control = 6525, .field = "vertical_align"}, {.control = 6509, .field = "word_wrap"},
    {.control = 6116, .field = "shadow"},
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
