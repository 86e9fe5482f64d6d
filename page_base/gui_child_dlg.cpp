#include "gui_child_dlg.h"

#include "engine/base_world.h"
#include "frame/menufun.h"
#include "gui_scene/gui_plug_scene.h"

QString tarn::gui_ui_resources()
{
    return QStringLiteral(":/gui_ui");
}

CGuiPlugScene* tarn::find_gui_scene(CBaseWorld& world)
{
    return dynamic_cast<CGuiPlugScene*>(
        world.plug_man().find_main_object_from_plug_desc(QStringLiteral("TARN-GUI-SCENE")));
}

CGuiChildDlg::~CGuiChildDlg()
{
    if (m_changes)
        m_changes->remove_listener(this);
}

void CGuiChildDlg::on_world_created(CBaseWorld* world)
{
    CChildDlg::on_world_created(world);
    m_scene = tarn::find_gui_scene(*world);
    m_core = m_scene ? &m_scene->gui_core() : nullptr;
    if (m_scene && !m_changes) {
        m_changes = &m_scene->document().changes();
        m_changes->add_listener(this);
    }
    if (!m_scene)
        enable_all_controls(this, false);
}

tarn::Journal* CGuiChildDlg::journal() const
{
    return m_scene ? &m_scene->journal() : nullptr;
}

bool CGuiChildDlg::is_editing() const
{
    return m_core && m_core->selection().editing;
}

void CGuiChildDlg::broadcast(int code)
{
    if (world())
        world()->broadcast(code);
}

void CGuiChildDlg::update_all_views()
{
    if (world())
        world()->update_all_views();
}
