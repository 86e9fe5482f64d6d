#include "dlg_prop_control.h"

#include "child_controls.h"
#include "child_ctrl_dimension.h"
#include "core/language.h"
#include "design/dlg_element_customize.h"
#include "frame/rollup.h"
#include "gui_core/control_state.h"
#include "gui_core/dxut_control.h"
#include "gui_scene/gui_plug_scene.h"
#include "menu_pages.h"

using tarn::ControlState;
using tarn::FieldRow;
using tarn::key;
using tarn::Shows;

namespace {

enum Id : int { id_name = 6396, id_swatch = 6199, id_visible = 6335, id_enabled = 6349, id_locked = 6355 };

enum Section : int { section_location, section_style, section_property, section_menus };

constexpr int flags = 1; ///< a click on one of the three writes them all

constexpr FieldRow rows[] = {
    {.control = id_name, .field = key<&ControlState::name>, .shows = Shows::Current, .reset = tarn::Default::None},
    {.control = id_visible, .field = key<&ControlState::visible>, .shows = Shows::Current, .together = flags},
    {.control = id_enabled, .field = key<&ControlState::enabled>, .shows = Shows::Current, .together = flags},
    {.control = id_locked, .field = key<&ControlState::locked>, .shows = Shows::Current, .together = flags},
    {.control = id_swatch,
     .field = key<&ControlState::color_tag>,
     .shows = Shows::Current,
     .follows = tarn::Follows::Redraw},
};

} // namespace

CDlgPropControl::CDlgPropControl(QWidget* parent)
    : CBoundPage(QStringLiteral("CDlgPropControl"), tarn::selected_controls, parent)
{
}

void CDlgPropControl::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    m_rollup = findChild<CMyRollup*>();
    bind(rows);
    create_sub_pages();
}

void CDlgPropControl::create_sub_pages()
{
    const auto insert = [this](CGuiChildDlg* page, int template_id, const char16_t* chinese, const char16_t* english) {
        page->Create(template_id, m_rollup);
        m_rollup->InsertPage(tarn::lang(chinese, english), page);
    };
    m_dimension = new CChildCtrlDimension;
    insert(m_dimension, 6353, u"位置尺寸", u"Location");
    insert(new CDlgElementCustomize, 6561, u"自定义风格", u"Custom Style");
    insert(new CChildControls, 6359, u"控件属性", u"Property");
    m_rollup->InsertPage(tarn::lang(u"菜单绑定", u"Menus"), tarn::make_page(tarn::control_menu_page(), m_rollup));
    m_rollup->ExpandAllPages(true);
    m_rollup->ExpandPage(section_style, false);
    m_rollup->ExpandPage(section_location, false);
    m_rollup->ExpandPage(section_menus, false);
}

void CDlgPropControl::on_world_created(CBaseWorld* world)
{
    CBoundPage::on_world_created(world);
    m_rollup->on_world_created(world);
}

void CDlgPropControl::update_ui(int code)
{
    CBoundPage::update_ui(code);
    m_rollup->update_ui(code);
}

void CDlgPropControl::refresh()
{
    CBoundPage::refresh();
    const auto* control = static_cast<const CDXUTControl*>(current());
    if (!control)
        return;
    const float center_y = control->height() / 2;
    m_dimension->set_aspect(center_y != 0 ? control->width() / 2 / center_y : 0);
}
