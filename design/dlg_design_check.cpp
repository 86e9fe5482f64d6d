#include "dlg_design_check.h"

#include "core/language.h"
#include "gui_core/control_style.h"
#include "state_button.h"

#include <QLabel>

using tarn::lang;
using tarn::LookPart;
using tarn::VisualState;

namespace {

enum Id : int {
    id_off = 7251,
    id_on = 7252,
    id_first_off = 7260, ///< one for each state
    id_first_on = 7270,
};

// Parts of what has a mark, see tarn::element_part().
enum Part : int { part_box, part_mark, part_count };

} // namespace

bool CDlgDesignCheck::suits(const LookPart& part)
{
    const bool has_mark = part.owner == DXUT_CONTROL_CHECKBOX || part.owner == DXUT_CONTROL_RADIOBUTTON;
    return has_mark && part.part < part_count;
}

QWidget* CDlgDesignCheck::create_widget(const QString& class_name, QWidget* parent)
{
    return class_name == QLatin1String("CStateButton") ? new CStateButton(parent) : nullptr;
}

void CDlgDesignCheck::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    const auto connect_row = [this](int first, int part) {
        for (int state = 0; state < tarn::style_state_count; ++state) {
            auto* tile = control_as<CStateButton>(first + state);
            tile->setText(tarn::visual_state_caption(VisualState(state)));
            connect(tile, &QAbstractButton::clicked, this, [this, part, state] {
                Q_EMIT part_chosen({m_owner, part, VisualState(state)});
            });
        }
    };
    connect_row(id_first_off, part_box);
    connect_row(id_first_on, part_mark);
}

void CDlgDesignCheck::show_part(const LookPart& part)
{
    m_owner = part.owner;
    const tarn::LookOwner& owner = *tarn::look_owner(m_owner);
    control_as<QLabel>(id_off)->setText(lang(u"未选中：%1", u"Off: %1").arg(tarn::part_caption(owner, part_box)));
    control_as<QLabel>(id_on)->setText(lang(u"选中：%1", u"On: %1").arg(tarn::part_caption(owner, part_mark)));
    for (int i = 0; i < tarn::style_state_count; ++i) {
        const auto state = VisualState(i);
        const LookPart box{m_owner, part_box, state};
        const LookPart mark{m_owner, part_mark, state};
        control_as<CStateButton>(id_first_off + i)->show_parts(core(), {box});
        control_as<CStateButton>(id_first_on + i)->show_parts(core(), {box, mark});
    }
    control_as<CStateButton>((part.part == part_mark ? id_first_on : id_first_off) + int(part.state))->setChecked(true);
}
