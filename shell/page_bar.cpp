#include "page_bar.h"

#include "core/res_handle_man.h"
#include "page_base/gui_child_dlg.h"

void CPageBar::hold(CChildDlg* page, int template_id)
{
    const CResHandleMan guard(tarn::gui_ui_resources());
    m_page = page;
    m_page->setParent(this);
    m_page->Create(template_id, this);
    setWidget(m_page);
}

void CPageBar::on_world_created(CBaseWorld* world)
{
    m_page->on_world_created(world);
}

void CPageBar::update_ui(int code)
{
    m_page->update_ui(code);
}
