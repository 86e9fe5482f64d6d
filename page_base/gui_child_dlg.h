#pragma once

#include "core/model_changes.h"
#include "frame/child_dlg.h"

class CBaseWorld;
class CGuiCore;
class CGuiPlugScene;

/// Base of every page of the interface editor. Once the world exists the page knows the scene and its core; where the
/// scene's plug-in is missing it stays disabled.
class CGuiChildDlg : public CChildDlg, private tarn::ModelListener {
    Q_OBJECT

public:
    using CChildDlg::CChildDlg;
    ~CGuiChildDlg() override;

    void on_world_created(CBaseWorld* world) override;
    void enable_window() { setEnabled(true); }
    void disable_window() { setEnabled(false); }

protected:
    /// The scene changed, whoever did it; comes once for any number of changes, before a code that tells of them.
    void model_changed(const tarn::ModelChange&) override {}
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
    tarn::ModelChanges* m_changes = nullptr; ///< those of the scene that the page listens to
};

namespace tarn {

/// The resource folder of the interface plug-in, for CResHandleMan.
QString gui_ui_resources();

/// The main object of the scene plug-in, "TARN-GUI-SCENE"; null when it is not loaded.
CGuiPlugScene* find_gui_scene(CBaseWorld& world);

} // namespace tarn
