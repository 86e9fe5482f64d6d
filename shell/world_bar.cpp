#include "world_bar.h"

#include "core/res_handle_man.h"
#include "page_base/gui_child_dlg.h"
#include "world_pages/dlg_world.h"

namespace {

constexpr int template_world = 7100;

} // namespace

CWorldBar::CWorldBar(const QString& title, QWidget* parent) : CMyControlBar(title, parent)
{
    follows_modes = false;
}

void CWorldBar::create_page()
{
    const CResHandleMan guard(tarn::gui_ui_resources());
    m_page = new CDlgWorld(this);
    m_page->Create(template_world, this);
    setWidget(m_page);
}

void CWorldBar::on_world_created(CBaseWorld* world)
{
    m_page->on_world_created(world);
}

void CWorldBar::update_ui(int code)
{
    m_page->update_ui(code);
}
