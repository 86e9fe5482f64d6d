#include "dlg_prop_info_box.h"

#include "core/language.h"
#include "gui_core/control_state.h"
#include "gui_core/dxut_info_box.h"

using tarn::InfoBoxState;
using tarn::key;

namespace {

constexpr tarn::FieldRow rows[] = {
    {.control = 6650, .field = key<&InfoBoxState::line_height>, .number = {.format = "%.0f"}},
    {.control = 6651, .field = key<&InfoBoxState::max_lines>, .number = {.format = "%.0f"}},
};

constexpr int id_test = 6652;

} // namespace

CPropDlgInfoBox::CPropDlgInfoBox(QWidget* parent)
    : CBoundPage(QStringLiteral("CPropDlgInfoBox"), DXUT_CONTROL_INFOBOX, parent)
{
}

void CPropDlgInfoBox::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    bind(rows);
    on_click(id_test, [this] {
        if (auto* box = static_cast<CDXUTInfoBox*>(current())) {
            box->AddString(tarn::lang(u"测试字符串", u"Test String"));
            tell_changed();
        }
    });
}
