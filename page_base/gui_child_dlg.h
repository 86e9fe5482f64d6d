#pragma once

#include "frame/child_dlg.h"

class CBaseWorld;
class CGuiCore;
class CGuiPlugScene;

/// Base of every page of the interface editor. Once the world exists the page knows the scene and its core; where the
/// scene's plug-in is missing it stays disabled.
class CGuiChildDlg : public CChildDlg {
    Q_OBJECT

public:
    using CChildDlg::CChildDlg;

    void on_world_created(CBaseWorld* world) override;
    void enable_window() { setEnabled(true); }
    void disable_window() { setEnabled(false); }

protected:
    CGuiPlugScene* scene() const { return m_scene; } ///< null until the world exists, and without the plug-in
    CGuiCore* core() const { return m_core; }
    /// False while the interface runs: what is done to it then is gone when it stops.
    bool is_editing() const;
    tarn::Journal* journal() const override;

    void broadcast(int code);
    void update_all_views();

private:
    CGuiPlugScene* m_scene = nullptr;
    CGuiCore* m_core = nullptr;
};

namespace tarn {

/// The resource folder of the interface plug-in, for CResHandleMan.
QString gui_ui_resources();

/// The main object of the scene plug-in, "TARN-GUI-SCENE"; null when it is not loaded.
CGuiPlugScene* find_gui_scene(CBaseWorld& world);

} // namespace tarn
