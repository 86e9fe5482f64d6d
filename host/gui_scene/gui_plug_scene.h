#pragma once

#include "core/journal.h"
#include "core/status.h"
#include "engine/mouse_tool.h"
#include "engine/plug_info.h"
#include "gui_core/gui_core.h"
#include "save_opt.h"

#include <functional>
#include <memory>

class CBaseWorld;
class CPakFile;
class CTexPathInfo;

/// The interface of a scene: its model, its packages, and the mouse tools that work on it in the views.
class CGuiPlugScene : public CPlugInfo {
public:
    CGuiPlugScene();
    ~CGuiPlugScene() override;

    CGuiCore& gui_core() { return m_core; }
    const CGuiCore& gui_core() const { return m_core; }
    tarn::Journal& journal() { return m_journal; }

    /// The world exists now: the scene's tool becomes the mouse tool of the views.
    void on_world_created(CBaseWorld* world);
    CBaseWorld* world() const { return m_world; }

    // The scene as a whole
    void clear();
    tarn::Status save(CPakFile& package, const CSaveOpt& options);
    /// Replaces the content by the package's; on failure nothing changes.
    tarn::Status load(const CPakFile& package, const CTexPathInfo& textures);
    /// Merges the package at `path`; see tarn::merge_content. On failure nothing changes.
    tarn::Status on_merge_GUI(const QString& path, const QString& name, bool replace_styles);
    void set_openfile_name(const QString& path) { m_file_name = path; }
    const QString& openfile_name() const { return m_file_name; }

    // Objects
    void RemoveDialog(CDXUTDialog* dialog);
    void RemoveCtrl(CDXUTControl* control);
    /// Changes between the selection of controls and that of dialogs.
    void switch_ctrl_dialog();
    void switch_ctrl_dialog(CDXUTControl* control, CDXUTDialog* dialog);

    /// What the left mouse button does in the views: `kind` 0 selects and moves, 1 draws a new dialog, 2 a new control of the type
    /// `type`.
    void SetMTFunction(int kind, int type);
    int mouse_function() const { return m_function; }

    // Preview
    /// Runs the interface, or ends that: everything takes the state again that it had before.
    void play(bool on);
    bool is_playing() const { return m_playing; }

private:
    tarn::Journal m_journal;
    CGuiCore m_core;
    CBaseWorld* m_world = nullptr;
    QString m_file_name;
    int m_function = 0;
    bool m_playing = false;
    std::vector<tarn::Journal::Entry> m_authored; ///< states from before the preview
    std::unique_ptr<tarn::MouseTool> m_select_tool;
    std::unique_ptr<tarn::MouseTool> m_create_tool;
    std::unique_ptr<tarn::MouseTool> m_play_tool;
};
