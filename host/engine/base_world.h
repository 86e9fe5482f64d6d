#pragma once

#include "core/document.h"
#include "core/progress.h"
#include "mouse_tool.h"
#include "orbit_camera.h"
#include "overlay.h"
#include "plug_dll_man.h"
#include "script/script_log.h"

#include <functional>
#include <memory>
#include <vector>

class CConfigScene;
class CSelection;

namespace tarn {

class AddressGate;
class CameraView;
class ScriptRuntime;
class WorldModels;
class WorldRenderer;
class WorldScene;
struct ScriptApi;

/// A part of the program that hears the notification codes.
class UiListener {
public:
    virtual ~UiListener() = default;
    virtual void update_ui(int code) = 0;
};

/// Notification codes that the host's own libraries send.
enum NotificationCode : int {
    ui_full_refresh = 1,
    ui_mode_entered = 9, ///< the author changed to another mode, whose windows are in front now
    ui_scene_changed = 70000,
    ui_dialog_properties = 70001,
    ui_control_selected = 70002,
    ui_control_properties = 70003,
    ui_selection_changed = 70004,
    ui_controls_changed = 70005,
    ui_world_selection_changed = 70006,
    ui_timebars_changed = 70007,
    ui_timebar_content = 70008,
};

} // namespace tarn

/// The 3D world, the document that it belongs to, and what connects the plug-ins that work on it.
class CBaseWorld {
public:
    CBaseWorld();
    ~CBaseWorld();

    /// Objects, journal and parts of the scene. Plug-ins bring the parts.
    tarn::Document& document() { return m_document; }
    CPlugDllMan& plug_man() { return m_plug_man; }

    /// Tells every listener, in the order in which they were added, before it returns; the sender hears it too. What
    /// changed in the document is told first.
    void broadcast(int code);
    void add_listener(tarn::UiListener* listener);
    void remove_listener(tarn::UiListener* listener);

    /// Asks every view to draw itself again. Cheap: views draw once for any number of calls.
    void update_all_views();
    /// While on, the views draw all the time.
    void api_always_refresh(bool on);
    /// Given by the program: what update_all_views() and api_always_refresh() reach.
    std::function<void()> on_redraw;
    std::function<void(bool)> on_always_refresh;
    /// Hears every code before the listeners do.
    std::function<void(int)> on_broadcast;

    /// The tool of the left mouse button; null when there is none. The world does not own it.
    tarn::MouseTool* mouse_tool() const { return m_tool; }
    void set_mouse_tool(tarn::MouseTool* tool);
    /// The tool that works when no other is set.
    void set_default_mouse_tool(tarn::MouseTool* tool);
    /// Back to the default tool; what is under way is cancelled.
    void api_reset_mt();

    /// What lies over the world in the views; null for nothing. The world does not own it.
    tarn::Overlay* overlay() const { return m_overlay; }
    void set_overlay(tarn::Overlay* overlay) { m_overlay = overlay; }

    /// What the views draw of the world's objects, between the ground and the overlay; null for nothing. The world does
    /// not own it.
    tarn::Overlay* objects_layer() const { return m_objects_layer; }
    void set_objects_layer(tarn::Overlay* layer) { m_objects_layer = layer; }

    tarn::OrbitCamera& camera() { return m_camera; }
    const tarn::OrbitCamera& camera() const { return m_camera; }
    /// Which camera of the world it looks through.
    tarn::CameraView& camera_view() { return *m_camera_view; }
    /// The objects of the world, a part of the document, and which of them are selected.
    tarn::WorldScene& objects() const { return *m_objects; }
    CSelection& selection() { return *m_selection; }
    const CSelection& selection() const { return *m_selection; }
    /// Their models, and what draws them.
    tarn::WorldModels& models() const { return *m_models; }
    tarn::WorldRenderer& renderer() const { return *m_renderer; }

    /// The scene's functions, and what runs them.
    CConfigScene& config_scene() { return *m_functions; }
    tarn::ScriptRuntime& scripts() { return *m_scripts; }
    /// What the running scene's functions did.
    tarn::ScriptLog& script_log() { return m_script_log; }
    /// Given by the program: shows a message (its text, its title) soon, without waiting for the answer.
    std::function<void(const QString&, const QString&)> on_message;
    /// What the scene may load from the network; null, as without the program's windows: nothing. The world does not own it.
    tarn::AddressGate* address_gate() const { return m_address_gate; }
    void set_address_gate(tarn::AddressGate* gate) { m_address_gate = gate; }
    /// What functions can call and reach; a scene brings it.
    void set_script_api(tarn::ScriptApi api);
    /// Does what may take long, with a progress that the program shows where there is one: `what` says what is done.
    using Work = std::function<tarn::Status(const tarn::Progress&)>;
    tarn::Status work(const QString& what, const Work& job);
    /// Given by the program. While the job asks whether to go on, windows are drawn and timers run, but nobody edits.
    std::function<tarn::Status(const QString& what, const Work& job)> on_work;
    /// Begins a trial of that name: what is changed is taken back when the answer is let go. Null: nothing can be taken back.
    std::function<std::shared_ptr<void>(const QString& name)> begin_edit;

private:
    tarn::Document m_document; ///< outlives the plug-ins, whose objects it holds
    std::unique_ptr<tarn::WorldModels> m_models;
    std::unique_ptr<tarn::WorldRenderer> m_renderer; ///< outlives who gives it pictures
    CPlugDllMan m_plug_man;
    std::vector<tarn::UiListener*> m_listeners; ///< null: removed while a code was being told
    int m_broadcasting = 0;                     ///< broadcasts under way, one inside the other
    tarn::MouseTool* m_tool = nullptr;
    tarn::MouseTool* m_default_tool = nullptr;
    tarn::Overlay* m_overlay = nullptr;
    tarn::Overlay* m_objects_layer = nullptr;
    tarn::AddressGate* m_address_gate = nullptr;
    tarn::OrbitCamera m_camera;
    std::unique_ptr<CConfigScene> m_functions;
    std::unique_ptr<tarn::WorldScene> m_objects;
    std::unique_ptr<CSelection> m_selection;
    std::unique_ptr<tarn::CameraView> m_camera_view;
    tarn::ScriptLog m_script_log;
    std::unique_ptr<tarn::ScriptRuntime> m_scripts; ///< dies before the functions
};
