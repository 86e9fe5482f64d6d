#pragma once

#include "animation_targets.h"
#include "core/journal.h"
#include "core/status.h"
#include "engine/scene_plug.h"
#include "event_manager.h"
#include "gui_core/gui_core.h"
#include "gui_scene_model.h"
#include "save_opt.h"
#include "script/config_scene.h"
#include "script/event_runner.h"
#include "script/timebar_runner.h"
#include "world/world_states.h"
#include "world_target.h"

#include <array>
#include <memory>
#include <optional>

class CAnimationScene;
class CBaseWorld;
class CDXUTFlash;
class CGuiStyle;
class CPakFile;
class CTexPathInfo;

namespace tarn {
class MouseTool;
class SceneInWorld;
class SceneMovies;
class SceneOverlay;
class SceneTools;
class FontLibrary;
class StyleLibrary;
class Translations;

struct TextureBinding {
    QString texture;    ///< name in the scene's textures
    quint32 color;      ///< ARGB; fills the texture under the dialog
    bool mouse = false; ///< the dialog there takes the mouse
};
} // namespace tarn

/// The interface of a scene: its model, its packages, and the mouse tools that work on it in the views.
class CGuiPlugScene : public CScenePlug {
public:
    /// What a marquee selects. Exactly one of the two is 1.
    struct SelectionMode {
        quint32 touched = 1; ///< the controls that it touches
        quint32 enclosed = 0;
    };

    CGuiPlugScene();
    ~CGuiPlugScene() override;

    // From join() on; before, there is no document that an interface could be part of.
    CGuiCore& gui_core() { return *m_core; }
    const CGuiCore& gui_core() const { return *m_core; }
    tarn::Document& document() const { return m_core->document(); }
    /// The world's functions, from on_world_created() on, and their bindings to events of controls.
    CConfigScene& functions() const;
    CEventManager& events() const { return *m_events; }
    CAnimationScene& animation() const { return *m_animation; }
    tarn::Translations& translations() const { return *m_translations; }
    void set_language(const QString& language);
    const QString& language() const override { return m_language; }
    tarn::Journal& journal() override { return document().journal(); }
    tarn::SceneModel& model() override { return m_model; }
    /// What the last check of the layout found.
    std::vector<tarn::SceneModel::Problem> layout_problems() const { return m_model.layout_problems(); }
    /// Of a scene that has tools.
    tarn::SceneEditor& editor() override;

    /// Makes what works on the scene in the views, when it joins a document.
    using MakeTools = std::function<std::unique_ptr<tarn::SceneTools>(CGuiPlugScene&)>;
    void set_tools(MakeTools make);
    void join(tarn::Document& document) override;
    void on_world_created(CBaseWorld* world) override;
    CBaseWorld* world() const { return m_world; }
    /// What timebars record of: the selected objects of the world, or else the selected controls or dialogs, the one that
    /// was selected last at the end.
    std::vector<tarn::ModelObject*> selected_objects() const;

    // The scene as a whole
    void clear();
    tarn::Status save(CPakFile& package, const CSaveOpt& options);
    /// Saves the scene, or what `options` tell of it, as a package of its own; the scene stays what it is.
    tarn::Status export_to(const QString& path, const CSaveOpt& options);
    /// Replaces the content; recorded like any change.
    void install(tarn::SceneSnapshot content);
    /// Replaces the content by the package's; on failure, and during a preview, nothing changes.
    tarn::Status load(const CPakFile& package, const CTexPathInfo& textures);
    /// Why the package at `path` cannot be merged, asked before the user is.
    tarn::Status check_merge(const QString& path);
    /// Merges the package at `path`; see tarn::merge_content. On failure, and during a preview, nothing
    /// changes.
    tarn::Status on_merge_GUI(const QString& path, const QString& name, bool replace_styles);
    void set_openfile_name(const QString& path) { m_file_name = path; }
    const QString& openfile_name() const { return m_file_name; }

    void new_scene() override;
    tarn::Status open_scene(const QString& path) override;
    tarn::Status save_scene(const QString& path, bool replace_read_only = false) override;
    std::unique_ptr<tarn::SceneCopy> copy_scene() const override;
    tarn::Status recover_scene(const QString& package, const QString& path) override;

    // Objects
    // What is removed takes the pictures along that nothing else uses; see tarn::PictureRelease.
    void RemoveDialog(CDXUTDialog* dialog);
    void RemoveDialogs(const std::vector<CDXUTDialog*>& dialogs);
    void RemoveCtrl(CDXUTControl* control);
    /// Removes many controls in one step of undo, at a cost that grows with their number and their dialogs' sizes only.
    void RemoveCtrls(const std::vector<CDXUTControl*>& controls);
    void RemoveMenu(CDXUTMenu* menu);
    /// The item with its submenu.
    void RemoveMenuItem(CDXUTMenuItem* item);

    // Pictures of objects. A file is taken into the scene; a picture that nothing uses any more leaves it.
    /// Gives the objects that have the attribute `field` the picture in the file `path`. On failure nothing changes. Of
    /// an attribute that names pictures for several looks it becomes that of `look`, a tarn::look_name().
    tarn::Status set_picture(const std::vector<tarn::ModelObject*>& objects, tarn::FieldKey field, const QString& path,
                             const char* look = "");
    void clear_picture(const std::vector<tarn::ModelObject*>& objects, tarn::FieldKey field, const char* look = "");
    /// Gives the selected controls the picture in the file `path`: a picture shows it, others are drawn from it in place
    /// of their first element's. `flag` is 1.
    tarn::Status SetControlTexture(const QString& path, int flag);
    /// `state` 0 normal, 1 mouse over, 2 pressed.
    tarn::Status set_buttonst_img(const std::vector<tarn::ModelObject*>& buttons, int state, const QString& path);
    /// Of check boxes and radio buttons; `state` 0 unchecked, 1 checked.
    tarn::Status set_checkbox_img(const std::vector<tarn::ModelObject*>& boxes, int state, const QString& path);
    /// `slot` 0 the map, 1 its surface, 2 its base.
    tarn::Status set_map_img(const std::vector<tarn::ModelObject*>& maps, int slot, const QString& path);
    /// `slot` is 0: a picture control has one picture.
    tarn::Status set_imgctrl_img(const std::vector<tarn::ModelObject*>& pictures, int slot, const QString& path);
    /// Gives the Flash control the movie in the file `source`, which is taken into the scene, or the one at the URL. A
    /// movie that no control shows any more leaves the scene. On failure nothing changes.
    tarn::Status set_Flashctrl_swf(CDXUTFlash& flash, const QString& source, bool is_local);

    // Styles
    /// What an author can choose from: the styles that the scene keeps, then those in files.
    QList<CGuiStyle*> styles();
    /// The interface takes the style on, one of styles(), or with null the program's own look; what the author changed of
    /// its look and did not save goes. A style in a file becomes a part of the scene. On failure nothing changes.
    tarn::Status ChangeStyle(CGuiStyle* style);
    /// The interface's look becomes a style of the scene and a file of the user's; what had that name goes. On failure nothing
    /// changes.
    tarn::Status save_current_style_as(const QString& name);
    /// Whether saving would replace one.
    bool has_style(const QString& name) const;
    /// The interface keeps its look, and the style its file.
    void remove_style(CGuiStyle* style);
    /// Where the user's file of that style is, or would be; empty for a name that no file can have.
    QString style_file(const QString& name) const;
    /// The program's own look is in force.
    void reset_style();
    /// Everything is drawn by what the styles say now.
    void update_all_ctrl_element();

    // Fonts of the package. One that nothing names any more leaves it.
    tarn::FontLibrary& fonts() const { return *m_fonts; }
    /// The texts of `owner`, see tarn::look_owner(), are in that family; empty for the usual one.
    void set_look_font(int owner, const QString& family);
    /// The same with the font in the file `path`, which is taken into the package. On failure nothing changes.
    tarn::Status take_look_font(int owner, const QString& path);
    /// The font of that entry goes; what is written in it takes the usual one.
    void remove_font(const QString& entry);

    // The texture of the world on which a dialog is drawn there. It belongs to the world, so unbinding leaves it.
    std::optional<tarn::TextureBinding> SearchTexbindByDialog(const CDXUTDialog* dialog) const;
    /// `texture` is a name in the scene's textures. Colour and mouse stay those of the binding before.
    void create_texture_dialog_bind(CDXUTDialog* dialog, const QString& texture);
    void remove_tex_binder(CDXUTDialog* dialog);

    /// Removes the events of controls that do not exist, and their functions where nothing else uses these. This cannot
    /// be undone. Nothing happens during a preview.
    void remove_deletectrl_GUI_scripts();
    /// Changes between the selection of controls and that of dialogs.
    void switch_ctrl_dialog();
    void switch_ctrl_dialog(CDXUTControl* control, CDXUTDialog* dialog);
    /// The same for many controls; they come to lie on top of the dialog's own in the given order.
    void switch_ctrl_dialog(const std::vector<CDXUTControl*>& controls, CDXUTDialog* dialog);

    /// What the left mouse button does in the views: `kind` 0 selects and moves, 1 draws a new dialog, 2 a new control of the type
    /// `type`.
    void SetMTFunction(int kind, int type);
    /// Back to selecting when something was to be created; what the mouse is doing otherwise goes on.
    void disarm();
    int mouse_function() const { return m_function; }
    /// The type of control that is drawn; -1 when none is.
    int mouse_function_type() const { return m_function_type; }

    /// Where the interface and the world meet; there is none before the world.
    tarn::SceneInWorld& in_world() const { return *m_in_world; }
    /// What plays the movies, likewise.
    tarn::SceneMovies& movies() const { return *m_movies; }

    SelectionMode& selection_mode() { return m_selection_mode; }

    // Pictures
    QSize design_size() const override { return m_core->design_size(); }
    void prepare_picture(QSize screen) override;
    bool awaits_picture() const override;
    tarn::Result<double> show_time(const QString& timebar, double time) override;
    tarn::Result<QRectF> show_alone(const QString& dialog, QSize screen) override;
    tarn::Status show_texts(const QString& language) override;

    // Preview
    void play(bool on) override;
    bool is_playing() const override { return m_playing; }
    void advance(double now) override;
    /// Runs what answers the events that the running interface raised since the last call.
    void deliver_events() { m_runner.deliver(); }

private:
    tarn::Status check_not_playing() const;
    void show_language();
    /// Reads the package at `path`, with the pictures that lie beside it, and does something with the content. Both are
    /// one work that is called `what`, so that whoever watches it sees it until all is done.
    tarn::Status with_file(const QString& path, const QString& what,
                           const std::function<tarn::Status(tarn::SceneSnapshot)>& use) const;
    tarn::Status write_file(const QString& path, const CSaveOpt& options, bool replace_read_only) const;
    /// Puts what was read in the place of everything; there is nothing to undo afterwards.
    void begin_anew(const QString& path);
    void become(tarn::SceneSnapshot content, const QString& path);
    /// What a script does outside a preview, until the answer is let go, is taken back then.
    std::shared_ptr<void> begin_script_edit(const QString& name);

    tarn::ControlTarget m_control_target;
    tarn::DialogTarget m_dialog_target;
    struct WorldTargetRow {
        tarn::TimerObjectType type;
        tarn::WorldTarget target;
    };
    std::array<WorldTargetRow, 5> m_world_targets{{
        {tarn::TimerObjectType::Model, tarn::WorldTarget(tarn::WorldType::Model)},
        {tarn::TimerObjectType::AniModel, tarn::WorldTarget(tarn::WorldType::AnimatedModel)},
        {tarn::TimerObjectType::Skeleton, tarn::WorldTarget(tarn::WorldType::Skeleton)},
        {tarn::TimerObjectType::Camera, tarn::WorldTarget(tarn::WorldType::Camera)},
        {tarn::TimerObjectType::Panel, tarn::WorldTarget(tarn::WorldType::Panel)},
    }};
    tarn::TimebarRunner m_timebar_runner{*this};
    std::unique_ptr<CAnimationScene> m_animation;
    std::unique_ptr<tarn::Translations> m_translations;
    QString m_language;
    std::unique_ptr<CEventManager> m_events; ///< the core closes the document that they are part of
    std::unique_ptr<CGuiCore> m_core;
    std::unique_ptr<tarn::StyleLibrary> m_style_library;
    std::unique_ptr<tarn::FontLibrary> m_fonts;
    tarn::EventRunner m_runner{*this};
    tarn::GuiSceneModel m_model{*this};
    std::unique_ptr<tarn::SceneInWorld> m_in_world; ///< made with the world
    std::unique_ptr<tarn::SceneMovies> m_movies;    ///< likewise
    std::unique_ptr<tarn::SceneOverlay>
        m_overlay; ///< made with the world: it needs the fonts and pictures of a program with a display
    CBaseWorld* m_world = nullptr;
    QString m_file_name;
    int m_function = 0;
    int m_function_type = -1;
    SelectionMode m_selection_mode;
    bool m_playing = false;
    double m_last_advance = 0; ///< seconds of the preview
    MakeTools m_make_tools;
    std::unique_ptr<tarn::SceneTools> m_tools;
    std::unique_ptr<tarn::MouseTool> m_create_tool; ///< null while nothing is drawn
};
